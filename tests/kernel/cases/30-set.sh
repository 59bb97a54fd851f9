# read_menu: the menu's raw report, after a read that must succeed.
read_menu() {
    ctl --json read
    expect_success
    menu=$(menu_report)
}

# expect_value CODE VALUE: in a new read of the base.
expect_value() {
    ctl --json read
    expect_success
    expect_json '.tuning.values[$code] == $value' --arg code "$1" --argjson value "$2"
}

case_the_sdk_layout_byte_for_byte() {
    start_base main --transport uhid --set 2 --mode standard
    read_menu
    ctl set FF=37
    expect_success
    grep -qxE 'FF +37 % \([0-9]+ ms\)' "$OUT" || fail "no receipt"
    expect_equal "lines of receipt" "$(wc -l <"$OUT")" 1
    expect_received main "$(sdk_write "$menu" 4 25)"
    expect_writes main 1
    expect_value FF 37
}

case_the_linux_layout_byte_for_byte() {
    start_base main --transport uhid --set 2 --layout linux
    read_menu
    ctl --layout linux set FF=37
    expect_success
    expect_received main "$(linux_write "$menu" 4 25)"
    expect_writes main 1
    expect_value FF 37
}

case_both_layouts_over_usb() {
    start_base main --transport usb
    read_menu
    ctl set SEN=540
    expect_success
    expect_received main "$(sdk_write "$menu" 3 b7)"
    expect_value SEN 540
    stop_base main
    wait_until 10 "the node to go" node_count_is 0
    start_base other --transport usb --layout linux
    read_menu
    ctl --layout linux set SEN=540
    expect_success
    expect_received other "$(linux_write "$menu" 3 b7)"
    expect_value SEN 540
}

case_several_values_are_written_in_menu_order() {
    start_base main --transport uhid
    ctl --json set INT=6 SHO=40 FF=37
    expect_success
    expect_json '[.results[] | [.parameter, .value, .readBack]] == [["FF", 37, 37], ["SHO", 40, 40], ["INT", 6, 6]]'
    expect_json 'all(.results[]; .error == null and .milliseconds >= 250)'
    expect_writes main 3
}

case_words_for_values() {
    start_base main --transport uhid
    ctl --json set SEN=AUTO FFS=LIN ACP=CH
    expect_success
    expect_json '[.results[].error] == [null, null, null]'
    expect_value FFS 0
    expect_value ACP 2
    expect_value SEN 2530
}

case_a_write_that_the_base_ignores() {
    start_base main --transport uhid --ignore FF
    ctl --json read
    local old
    old=$(json .tuning.values.FF "$OUT")
    ((old != 37)) || fail "the base starts with the value to be written"
    ctl set FF=37
    expect_status 1
    expect_text "The base ignored the FF write; it still reports $old"
}

case_it_goes_on_after_an_ignored_write() {
    start_base main --transport uhid --ignore FF
    ctl --json read
    local old
    old=$(json .tuning.values.FF "$OUT")
    ctl --json set FF=37 SHO=40
    expect_status 1
    expect_json '.results | length == 2'
    expect_json '.results[0] | .parameter == "FF" and .readBack == $old' --argjson old "$old"
    expect_json '.results[0].error == "The base ignored the FF write; it still reports \($old)"' --argjson old "$old"
    expect_json '.results[1] | .parameter == "SHO" and .readBack == 40 and .error == null'
}

case_a_value_out_of_range_is_not_sent() {
    start_base main --transport uhid
    ctl set SEN=80
    expect_status 1
    expect_text 'SEN value 80 is outside 90...2520'
    expect_writes main 0
}

case_four_values_beside_a_stream_of_wheel_reports() {
    start_base main --transport uhid --stream --foreign
    ctl --json set FF=37 SHO=40 INT=6 FEI=50
    expect_success
    expect_json '[.results[] | .error == null and .value == .readBack] == [true, true, true, true]'
    expect_writes main 4
}

case_a_base_that_answers_late() {
    start_base main --transport uhid --answer-delay 1500
    ctl --json set FF=37
    expect_success
    expect_json '.results[0].readBack == 37'
}

case_an_interrupt_finishes_the_value_in_flight() {
    start_base main --transport uhid
    start_ctl save --json set SEN=540 FF=37 SHO=40 INT=6 FEI=50 FFS=LIN
    wait_until 20 "the second write" packets_reached main "$menu_writes" 2
    interrupt save
    join save
    expect_status 130
    expect_faster 2
    expect_json '[.results[] | select(.error == null)] | length >= 2 and length < 6'
    expect_json '.results | all(.error == null and .value == .readBack)'
    expect_writes main "$(json '.results | length' "$OUT")"
}

# The values after the switch were meant for the other set.
case_a_base_that_is_slow_to_switch_gets_no_value_for_the_other_set() {
    start_base main --transport uhid --set 2 --switch-delay 30000
    ctl set SLOT=4 FF=56
    expect_status 1
    expect_line 'SLOT not written: The base ignored the SLOT write; it still reports 2'
    expect_text 'FF   not written: '
    expect_writes main 0
    expect_value FF 65
}
