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
    local rule=/etc/udev/rules.d/70-quorvane.rules
    mv "$rule" "$work/rule"
    udevadm control --reload
    start_base main --transport uhid
    ctl read
    local status=$STATUS
    mv "$work/rule" "$rule"
    udevadm control --reload
    STATUS=$status
    expect_the_rule_to_be_named
    unplug main
    plug main
    ctl read
    expect_success
}

case_a_usb_reset_needs_permission_too() {
    start_base main --transport usb
    ctl_as 1001 usb-reset
    expect_status 1
    expect_error_text 70-quorvane.rules
}
