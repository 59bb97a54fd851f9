case_raw_packets_arrive_byte_for_byte() {
    local short='01 f8 09 01 06 ff 04 00' long
    long="ff $(printf '%02x ' {1..63})"
    long=${long% }
    start_base main --transport usb
    # shellcheck disable=SC2086
    ctl raw $short
    expect_success
    # shellcheck disable=SC2086
    ctl raw $long
    expect_success
    expect_equal "what arrived" "$(received main)" "$short"$'\n'"$long"
}

case_twenty_packets_in_a_row_all_arrive() {
    start_base main --transport usb
    local value sent=''
    for value in {10..29}; do
        ctl raw 01 f8 81 "$value" 00 00 00 00
        expect_success
        sent+="01 f8 81 $value 00 00 00 00"$'\n'
    done
    expect_equal "what arrived" "$(received main)" "${sent%$'\n'}"
}

case_read_and_set() {
    start_base main --transport usb --serial QV-0006 --set 5
    ctl --json read
    expect_success
    expect_json '.device.serialNumber == "QV-0006" and .tuning.set == 5 and .identity != null'
    ctl --json set FF=37 INT=6
    expect_success
    expect_json '[.results[].readBack] == [37, 6]'
}

kernel_resets() {
    dmesg | grep -c 'usb .*: reset full-speed USB device' || true
}

case_reset_by_the_user() {
    local before
    before=$(kernel_resets)
    start_base main --transport usb
    ctl usb-reset
    expect_success
    expect_line 'USB reset issued; the base will reconnect in a few seconds'
    expect_equal "the number of resets that the kernel made" "$(kernel_resets)" $((before + 1))
    wait_until 10 "the node" node_count_is 1
    udev_settles
    ctl --json read
    expect_success
    expect_json '.tuning.raw | startswith("ff 03")'
}

case_reset_finds_no_base_without_usb() {
    start_base main --transport uhid
    ctl usb-reset
    expect_status 1
    expect_no_output
    expect_error_text 'HID I/O failed: no USB device with vendor 0xeb7 found'
}
