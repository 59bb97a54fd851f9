expect_the_rule_to_be_named() {
    expect_status 1
    expect_error_text 'HID I/O failed: not permitted: '
    expect_error_text 70-quorvane.rules
    (($(wc -l <"$ERR") == 2)) || fail "not two lines on standard error"
}

case_a_user_who_does_not_sit_at_the_machine() {
    start_base main --transport uhid
    ctl_as 1001 read
    expect_the_rule_to_be_named
    expect_no_output
    ctl_as 1001 set FF=37
    expect_the_rule_to_be_named
    expect_packets main 0
}

case_devices_says_that_a_base_is_not_accessible() {
    start_base main --transport uhid --serial QV-0005
    ctl_as 1001 --json devices
    expect_status 0
    expect_error_text 70-quorvane.rules
    expect_json '.devices[0] | .accessible == false and .serialNumber == "QV-0005" and (.reports | length == 4)'
    ctl_as 1001 --json read
    expect_status 1
    expect_json '.error.kind == "ioFailed" and (.error.message | startswith("HID I/O failed: not permitted: "))'
}

case_the_rule_is_what_grants_access() {
    set_rule_aside
    start_base main --transport uhid
    ctl read
    local status=$STATUS
    put_rule_back
    STATUS=$status
    expect_the_rule_to_be_named
    unplug main
    plug main
    ctl read
    expect_success
}

# Runs as root, because the guest has no way to ask for a password.
case_the_rule_is_installed_and_removed_by_a_command() {
    set_rule_aside
    start_base main --transport usb
    run quorvanectl udev-rule --install
    expect_success
    expect_line "Installed $our_rule"
    cmp "$our_rule" "$work/rule" || fail "another rule"
    ctl read
    expect_success
    ctl udev-rule --install
    expect_success
    expect_line "The rule is in $our_rule already"
    expect_line "$(node_of main) opens now"
    run quorvanectl udev-rule --remove
    expect_success
    [[ ! -e $our_rule ]] || fail "the rule is still there"
    unplug main
    plug main
    ctl read
    expect_the_rule_to_be_named
}

# grant_late: installs the rule while the base is plugged in, with the commands of the guide.
grant_late() {
    put_rule_back
    udevadm trigger
    udev_settles
}

case_monitor_goes_on_when_access_comes_late() {
    set_rule_aside
    start_base main --transport uhid
    start_ctl monitor --json monitor
    wait_until 20 "the line about the rule" grep -qF 70-quorvane.rules "$work/monitor.err"
    grant_late
    wait_until 20 "the first read" packets_reached main "$menu_requests" 1
    base_command main turn FF 41
    wait_until 20 "the value in the monitor's output" grep -qF '"value":41' "$work/monitor.out"
    interrupt monitor
    join monitor
    expect_status 0
}

# From systemd 258 on, logind triggers the nodes to grant them to the user who takes the seat.
case_monitor_goes_on_when_the_user_takes_the_seat() {
    give_seat 1001
    start_base main --transport uhid
    start_ctl monitor --json monitor
    wait_until 20 "the line about the rule" grep -qF 70-quorvane.rules "$work/monitor.err"
    give_seat 1000
    udevadm trigger --action=change --subsystem-match=hidraw
    wait_until 20 "the first read" packets_reached main "$menu_requests" 1
    interrupt monitor
    join monitor
    expect_status 0
}

case_the_window_connects_when_access_comes_late() {
    set_rule_aside
    start_base main --transport usb
    start_window window
    wait_until 20 "the failure to open" grep -q '^\[error\] Could not open ' "$work/window.err"
    grant_late
    expect_log window '[log] Connected to CSL DD Wheel Base'
    await_state window '.rows.FF == "Force feedback strength, 65 %"'
    quit_model window
}

case_a_usb_reset_needs_permission_too() {
    start_base main --transport usb
    ctl_as 1001 usb-reset
    expect_status 1
    expect_error_text 70-quorvane.rules
}
