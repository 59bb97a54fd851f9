toggle=$(tuning_packet 03 06)
factory_reset=$(tuning_packet 03 04)

case_select_switches_the_set() {
    start_base main --transport uhid --set 1
    ctl select 4
    expect_success
    expect_received main "$(tuning_packet 03 01 04)"
    ctl --json read
    expect_json '.tuning.set == 4'
}

case_select_refuses_a_set_that_does_not_exist() {
    start_base main --transport uhid --set 1
    ctl select 6
    expect_status 1
    expect_error_text 'Set 6: there are sets 1 to 5'
    expect_packets main 0
    ctl --json read
    expect_json '.tuning.set == 1'
}

case_mode_is_shown_without_a_toggle() {
    start_base main --transport uhid --mode standard
    ctl mode
    expect_success
    expect_line standard
    expect_received main "$toggle" 0
}

case_mode_toggles_when_needed_and_only_then() {
    start_base main --transport uhid --mode standard
    ctl mode advanced
    expect_success
    expect_received main "$toggle" 1
    ctl --json read
    expect_json '.tuning.mode == "advanced"'
    ctl mode advanced
    expect_success
    expect_received main "$toggle" 1
    ctl mode standard
    expect_success
    expect_received main "$toggle" 2
    ctl --json read
    expect_json '.tuning.mode == "standard"'
}

case_factory_reset_asks_for_yes() {
    start_base main --transport uhid
    ctl factory-reset
    expect_status 2
    expect_no_output
    expect_error_text --yes
    expect_received main "$factory_reset" 0
}

case_factory_reset_with_yes() {
    start_base main --transport uhid
    ctl --json read
    local before
    before=$(json -c .tuning.values "$OUT")
    ctl set FF=37
    expect_success
    ctl factory-reset --yes
    expect_success
    expect_line 'Tuning menu reset to factory defaults'
    expect_received main "$factory_reset" 1
    ctl --json read
    expect_json '.tuning.values.FF != 37 and .tuning.mode == "standard"'
}

case_rotation_sends_three_short_packets() {
    start_base main --transport usb
    ctl rotation 900
    expect_success
    local expected=$'01 f5 00 00 00 00 00 00\n01 f8 09 01 06 01 00 00\n01 f8 81 84 03 00 00 00'
    expect_equal "the short packets" "$(received main | grep '^01 ' || true)" "$expected"
}

case_pedals_have_no_rotation() {
    start_base main --transport usb --show-as 183b
    ctl rotation 900
    expect_status 1
    expect_no_output
    expect_error_text 'ClubSport Pedals V3 has no steering angle'
    ctl --json rotation 900
    expect_status 1
    expect_json '.error.kind == "notAvailable"'
    expect_packets main 0
}
