timed_out='Timed out waiting for tuning menu report (is the base in PC mode and on a supported firmware?)'

# byte_of_report OFFSET: a byte of the raw report in standard output, in decimal.
byte_of_report() {
    local -a bytes
    read -ra bytes <<<"$(menu_report)"
    echo "$((16#${bytes[$1]}))"
}

case_text_over_uhid() {
    start_base main --transport uhid --mode standard
    ctl read
    expect_success
    grep -qE '^  Menu +standard, set ' "$OUT" || fail "no line for mode and set"
    grep -qE '^  SEN +[0-9]+ deg +Sensitivity \(steering angle\)$' "$OUT" || fail "no line for SEN"
    grep -qE '^  FF +[0-9]+ % +Force feedback strength$' "$OUT" || fail "no line for FF"
}

case_json_over_uhid() {
    start_base main --transport uhid --serial QV-0004 --set 3 --mode advanced
    ctl --json read
    expect_success
    expect_json '.device | .serialNumber == "QV-0004" and .id == "0eb7:0020@00000000/1:4" and .productID == 32'
    expect_json '.device.node == $node' --arg node "$(node_of main)"
    expect_json '.identity | (.base | length > 0) and (.wheel | length > 0) and (.module | length > 0)'
    expect_json '.tuning | .set == 3 and .mode == "advanced" and (.raw | test("^ff 03( [0-9a-f]{2}){62}$"))'
    expect_json '.tuning.values | length == 16 and (has("SLOT") | not) and all(.[]; type == "number")'
    expect_json '.tuning.values.FF == $byte' --argjson byte "$(byte_of_report 4)"
    expect_json '.tuning.values.SHO == $byte * 10' --argjson byte "$(byte_of_report 5)"
    expect_json '.tuning.values.INT == $byte' --argjson byte "$(byte_of_report 20)"
}

case_the_standard_menu() {
    start_base main --transport uhid --set 1 --mode standard
    ctl --json read
    expect_success
    expect_json '.tuning | .set == 1 and .mode == "standard"'
}

case_it_asks_for_identity_and_menu_and_nothing_else() {
    start_base main --transport uhid
    ctl read
    expect_success
    expect_received main "$(tuning_packet 08 01 ff)"
    expect_received main "$(tuning_packet 08 02)"
    expect_received main "$(tuning_packet 03 02)"
    expect_packets main 3
}

case_a_base_that_answers_after_a_second_and_a_half() {
    start_base main --transport uhid --answer-delay 1500
    ctl --json read
    expect_success
    expect_json '.identity != null and .tuning.values.FF >= 0'
    ((ELAPSED >= 1500)) || fail "faster than the base"
}

case_a_base_that_never_answers() {
    start_base main --transport uhid --silent
    ctl read
    expect_status 1
    expect_no_output
    expect_error_text "$timed_out"
    expect_faster 7
    ctl --json read
    expect_status 1
    expect_json '.error.kind == "timeout" and .error.message == $text' --arg text "$timed_out"
}

case_a_base_that_answers_identity_only() {
    start_base main --transport uhid --no-tuning
    ctl read
    expect_status 1
    expect_error_text "$timed_out"
    expect_faster 5
}

# request_times NAME: when each menu request reached the base, in milliseconds.
request_times() {
    sed -n 's/^\([0-9]*\)\.\([0-9]*\) received ff 03 02 .*/\1\2/p' "$work/$1.transcript"
}

# Each of the two sees the other's answers as well as its own.
case_two_programs_at_once() {
    local delay=1200 name
    local -a times
    start_base main --transport uhid --answer-delay "$delay"
    start_ctl one --json read
    start_ctl two --json read
    for name in one two; do
        join "$name"
        expect_success
        expect_json '.tuning.raw | startswith("ff 03")'
    done
    mapfile -t times < <(request_times main)
    expect_equal "the number of menu requests" "${#times[@]}" 2
    ((times[1] - times[0] < delay)) || fail "the second asked after the first had its answer"
}

expect_ten_reads() {
    local round
    for round in {1..10}; do
        ctl --json read
        expect_success
        expect_json '.tuning.values.FF == 65 and .identity != null'
    done
    expect_received main "$menu_requests" "$round"
}

case_ten_reads_beside_a_stream_of_wheel_reports() {
    start_base main --transport uhid --stream --foreign
    expect_ten_reads
}

case_ten_reads_beside_a_stream_over_usb() {
    start_base main --transport usb --stream
    expect_ten_reads
}
