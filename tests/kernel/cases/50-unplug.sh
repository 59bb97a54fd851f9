# lines_of NAME FILTER COUNT: whether at least COUNT of the program's JSON lines pass FILTER.
lines_of() {
    (($(json -c "select($2)" "$work/$1.out" 2>/dev/null | wc -l) >= $3))
}

expect_event() {
    wait_until 10 "event $3 of: $2" lines_of "$1" "$2" "$3"
}

case_in_the_middle_of_a_save() {
    start_base main --transport uhid
    start_ctl save --json set SEN=540 FF=37 SHO=40 INT=6 FEI=50 FFS=LIN
    wait_until 20 "the third write" packets_reached main "$menu_writes" 3
    mark
    base_command main unplug
    join save
    expect_faster 3
    expect_status 1
    expect_json '.results | length >= 3'
    expect_json '.results[:2] | all(.error == null and .value == .readBack)'
    expect_json 'any(.results[]; .error != null)'
}

case_in_the_middle_of_a_save_over_usb() {
    start_base main --transport usb
    start_ctl save set SEN=540 FF=37 SHO=40 INT=6 FEI=50 FFS=LIN
    wait_until 20 "the third write" packets_reached main "$menu_writes" 3
    mark
    base_command main unplug
    join save
    expect_faster 3
    expect_status 1
    grep -qxE 'SEN +540 deg \([0-9]+ ms\)' "$OUT" || fail "no receipt for SEN"
    grep -qxE 'FF +37 % \([0-9]+ ms\)' "$OUT" || fail "no receipt for FF"
    expect_text 'not written: '
}

# The fifth packet requests the read-back of FF.
case_before_the_read_back_of_a_value() {
    start_base main --transport uhid --unplug-after 5
    ctl --json set SEN=540 FF=37 SHO=40 INT=6
    expect_status 1
    expect_json '[.results[] | [.parameter, .readBack, .error == null]] ==
        [["SEN", 540, true], ["FF", null, false], ["SHO", null, false], ["INT", null, false]]'
    expect_writes main 2
    expect_faster 5
}

case_while_a_read_waits() {
    start_base main --transport uhid --answer-delay 1500
    start_ctl waiting read
    wait_until 10 "the request" packets_reached main '*' 1
    mark
    base_command main unplug
    join waiting
    expect_faster 3
    expect_status 1
    [[ -s $ERR ]] || fail "no message"
}

case_a_base_works_again_after_a_replug() {
    start_base main --transport uhid
    ctl set FF=37
    expect_success
    unplug main
    ctl read
    expect_status 1
    plug main
    ctl --json read
    expect_success
    expect_json '.tuning.values.FF == 37'
}

case_monitor_shows_arrival_removal_and_arrival() {
    local transport
    for transport in uhid usb; do
        start_base "$transport" --transport "$transport" --serial "QV-$transport"
        start_ctl monitor --json monitor
        expect_event monitor '.event == "arrival"' 1
        # A base that goes earlier makes the monitor say that it cannot be opened.
        wait_until 10 "the request of the menu" packets_reached "$transport" "$menu_requests" 1
        unplug "$transport"
        expect_event monitor '.event == "removal"' 1
        plug "$transport"
        expect_event monitor '.event == "arrival"' 2
        interrupt monitor
        join monitor
        stop_base "$transport"
        wait_until 10 "the node to go" node_count_is 0
        expect_equal "the events" "$(json -r .event "$OUT" | grep -v value | paste -sd ' ')" 'arrival removal arrival'
    done
}

case_monitor_shows_a_base_plugged_in_later() {
    start_ctl monitor monitor
    start_base main --transport usb
    wait_until 10 "the line of the arrival" grep -qF "arrival CSL DD / GT DD Pro / ClubSport DD $(node_of main)" \
        "$work/monitor.out"
}

# expect_turn CODE VALUE: changes a value on the wheel; the monitor must show it.
expect_turn() {
    base_command main turn "$1" "$2"
    wait_until 10 "$1 $2 in the monitor's output" lines_of monitor \
        ".event == \"value\" and .parameter == \"$1\" and .value == $2" 1
}

case_monitor_shows_values_turned_at_the_wheel() {
    start_base main --transport uhid --stream
    start_ctl monitor --json monitor
    wait_until 10 "the first read" packets_reached main "$menu_requests" 1
    pause 0.5
    expect_received main "$menu_requests" 1
    expect_turn FF 41
    expect_turn SHO 30
    unplug main
    plug main
    wait_until 10 "the read after the replug" packets_reached main "$menu_requests" 2
    pause 0.5
    expect_received main "$menu_requests" 2
    expect_turn FF 52
    interrupt monitor
    join monitor
    expect_success
    expect_equal "the events" "$(json -r .event "$OUT" | grep -v wheel | paste -sd ' ')" \
        'arrival value value removal arrival value'
}
