# expect_outcomes MARKS: one mark each for usb, driver, node, access, reports, identity, tuning,
# holders and presets: "+" passed, "x" failed, "." not checked.
expect_outcomes() {
    expect_equal "the outcomes" "$(json -r '[.checks[] | {"pass": "+", "fail": "x"}[.outcome] // "."] | join("")' "$OUT")" "$1"
}

# expect_check ID FILTER: FILTER is true for the check, with $node for the base's node.
expect_check() {
    expect_json ".checks[] | select(.id == \"$1\") | $2" --arg node "$(node_of main)"
}

# doctor [UID]: runs the doctor, which must end in time and without a message.
doctor() {
    ctl_as "${1-1000}" --json doctor
    expect_faster 5
    [[ ! -s $ERR ]] || fail "a message on standard error"
}

# expect_well TRANSPORT
expect_well() {
    start_base main --transport "$1" --serial QV-4711
    doctor
    expect_status 0
    expect_outcomes '+++++++++'
    expect_json '.passed == true'
    expect_check node '.finding == $node'
    expect_check access '.finding | contains("its access list names you (/etc/udev/rules.d/70-quorvane.rules, line ")'
}

case_a_base_over_uhid_that_is_well() {
    expect_well uhid
}

case_a_base_over_usb_that_is_well() {
    expect_well usb
}

case_a_base_that_is_well_in_words() {
    start_base main --transport usb
    ctl doctor
    expect_success
    expect_text "ok   Device node: $(node_of main)"
    expect_line 'ok   Driver: usbhid, hid-generic'
}

case_nothing_attached() {
    doctor
    expect_status 1
    expect_outcomes 'x.......+'
}

case_an_interface_without_a_driver() {
    start_base main --transport usb
    local interface
    interface=$(readlink -f "/sys/class/hidraw/$(basename "$(node_of main)")/device/..")
    interface=${interface##*/}
    echo "$interface" >/sys/bus/usb/drivers/usbhid/unbind
    wait_until 10 "the node to go" node_count_is 0
    doctor
    echo "$interface" >/sys/bus/usb/drivers/usbhid/bind
    wait_until 10 "the node to come back" node_count_is 1
    udev_settles
    expect_status 1
    expect_outcomes '+x......+'
    expect_check driver '.nextStep | contains("modprobe usbhid")'
}

case_without_the_rule() {
    set_rule_aside
    start_base main --transport uhid
    doctor
    put_rule_back
    expect_status 1
    expect_outcomes '+++x+..++'
    expect_check access '.finding == "no udev rule gives you " + $node'
}

case_a_rule_that_came_after_the_base() {
    set_rule_aside
    start_base main --transport uhid
    put_rule_back
    doctor
    expect_status 1
    expect_outcomes '+++x+..++'
    expect_check access '.finding | endswith("was not there yet when the base was plugged in")'
    udevadm trigger
    udev_settles
    doctor
    expect_status 0
}

case_a_rule_with_too_high_a_number() {
    set_rule_aside
    cp "$work/rule" /etc/udev/rules.d/90-quorvane.rules
    udevadm control --reload
    start_base main --transport usb
    doctor
    put_rule_back
    expect_status 1
    expect_outcomes '+++x+..++'
    expect_check access '.nextStep | contains("mv /etc/udev/rules.d/90-quorvane.rules /etc/udev/rules.d/70-quorvane.rules")'
}

# A trigger also happens when another user takes the seat: logind does it from systemd 258 on.
case_a_rule_that_runs_only_when_the_base_is_added() {
    set_rule_aside
    sed 's/^SUBSYSTEM/ACTION=="add", &/' "$work/rule" >"$our_rule"
    udevadm control --reload
    start_base main --transport uhid
    udevadm trigger
    udev_settles
    doctor
    put_rule_back
    if (($(udevadm --version | grep -o '^[0-9]*') < 258)); then
        expect_status 0
        return
    fi
    expect_status 1
    expect_outcomes '+++x+..++'
    expect_check access '.finding | contains("runs only when the base is added")'
}

case_two_rules_that_conflict() {
    echo 'KERNELS=="0003:0EB7:*", TAG="locked"' >/etc/udev/rules.d/72-lock.rules
    udevadm control --reload
    start_base main --transport uhid
    doctor
    rm /etc/udev/rules.d/72-lock.rules
    udevadm control --reload
    expect_status 1
    expect_outcomes '+++x+..++'
    expect_check access '.finding | startswith("two rules conflict: ") and contains("72-lock.rules")'
}

case_a_user_who_does_not_sit_at_the_machine() {
    start_base main --transport uhid
    doctor 1001
    expect_status 1
    expect_outcomes '+++x+..++'
    expect_check access '.finding | endswith("to whoever sits at the machine: not to you")'
}

case_a_base_that_does_not_answer() {
    start_base main --transport uhid --silent
    doctor
    expect_status 1
    expect_outcomes '+++++xx++'
}

case_a_base_without_a_menu() {
    start_base main --transport uhid --no-tuning
    doctor
    expect_status 1
    expect_outcomes '++++++x++'
    expect_check tuning '.finding | startswith("Timed out waiting for tuning menu report")'
}

case_another_program_keeps_it_to_itself() {
    start_base main --transport uhid
    become 1000 flock --no-fork --exclusive "$(node_of main)" sleep 60 &
    background[holder]=$!
    wait_until 10 "the lock" grep -q 'FLOCK .* WRITE' /proc/locks
    doctor
    expect_status 1
    expect_outcomes '+++++..x+'
    expect_check holders '.finding | contains("keeps " + $node + " to itself")'
}

case_another_program_that_does_no_harm() {
    start_base main --transport uhid
    start_ctl monitor monitor
    wait_until 10 "the monitor" grep -q arrival "$work/monitor.out"
    doctor
    expect_status 0
    expect_check holders '.finding | test("^also open in quorvanectl \\(process [0-9]+\\)")'
    interrupt monitor
    join monitor
}

case_a_home_that_may_not_be_written() {
    local folder=/run/quorvane/home-1000/.local/share/Quorvane
    install -d -o 1000 -g 1000 /run/quorvane/home-1000/{.local,.local/share} "$folder"
    start_base main --transport uhid
    chmod 500 "$folder"
    doctor
    chmod 700 "$folder"
    expect_status 1
    expect_outcomes '++++++++x'
}

# A file system whose server never answers, like a network share whose server is off.
case_a_home_that_does_not_answer() {
    local folder=/run/quorvane/home-1000/.local/share/Quorvane
    install -d -o 1000 -g 1000 /run/quorvane/home-1000/{.local,.local/share} "$folder"
    start_base main --transport uhid
    exec 9<>/dev/fuse
    mount -i -t fuse -o fd=9,rootmode=40000,user_id=1000,group_id=1000 silent "$folder"
    ctl_as 1000 --json doctor 9>&-
    exec 9>&-
    umount -l "$folder"
    expect_faster 5
    expect_status 1
    expect_outcomes '++++++++x'
    expect_check presets '.finding | contains("the file system it is on does not answer")'
}

case_the_report_masks_the_serial_number() {
    start_base main --transport usb --serial QV-4711
    ctl doctor --report -
    expect_success
    expect_text 'serial number (masked)'
    expect_text '70-quorvane.rules:'
    ! grep -qiF QV-4711 "$OUT" || fail "the serial number is in the report"
    ! grep -qF home-1000 "$OUT" || fail "the home directory is in the report"
}
