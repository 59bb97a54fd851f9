connected='[log] Connected to CSL DD Wheel Base'

# wakeups PID: the voluntary context switches of its threads so far.
wakeups() {
    awk '/^voluntary_ctxt_switches/ { sum += $2 } END { print sum + 0 }' /proc/"$1"/task/*/status
}

# processor_us PID: the processor time of its threads so far, in microseconds.
processor_us() {
    awk '{ sum += $1 } END { printf "%.0f\n", sum / 1000 }' /proc/"$1"/task/*/schedstat
}

# measure SECONDS PID: leaves its wake-ups and its processor time per second in WAKEUPS and
# PROCESSOR_US.
measure() {
    local slept time begin end
    milliseconds begin
    slept=$(wakeups "$2") time=$(processor_us "$2")
    pause "$1"
    slept=$(($(wakeups "$2") - slept)) time=$(($(processor_us "$2") - time))
    milliseconds end  # a busy machine makes the pause longer
    WAKEUPS=$((slept * 1000 / (end - begin)))
    PROCESSOR_US=$((time * 1000 / (end - begin)))
}

rests() {
    measure 1 "$1"
    ((WAKEUPS <= 60))
}

# A program that takes each report as it arrives.
start_plain_reader() {
    become 1000 cat "$(node_of "$1")" >/dev/null 2>&1 &
    background[plain]=$!
}

case_a_window_rests_beside_a_base_that_streams() {
    local pid plain
    start_base main --transport uhid --stream
    start_window window
    await_state window '.rows.FF == "Force feedback strength, 65 %"'
    pid=${background[window]}
    wait_until 30 "the window to rest" rests "$pid"
    measure 10 "$pid"
    echo "the window: $WAKEUPS wake-ups and $PROCESSOR_US us a second"
    ((WAKEUPS <= 60)) || fail "$WAKEUPS wake-ups a second instead of 60 at most"
    start_plain_reader main
    plain=${background[plain]}
    measure 10 "$plain"
    echo "a plain reader: $WAKEUPS wake-ups and $PROCESSOR_US us a second"
    ((WAKEUPS >= 100)) || fail "the base hardly streams: $WAKEUPS wake-ups of a plain reader"
    kill "$plain"
    wait_until 10 "the end of the plain reader" has_ended "$plain"
    unset "background[plain]"

    mark
    base_command main turn FF 41
    await_state window '.rows.FF == "Force feedback strength, 41 %"'
    take_elapsed
    expect_faster 5
    wait_until 30 "the window to rest again" rests "$pid"
    mark
    base_command main unplug
    await_state window '.rows == {}'
    take_elapsed
    expect_faster 5
    quit_model window
}

# answered NAME COUNT: whether the base NAME has received COUNT menu requests and the model is idle.
answered() {
    count_packets "$1" "$menu_requests"
    ((COUNT == $2)) && holds model '(.busy | not)'
}

# One read at the start, most others in a row, and the last ones each while the model is idle.
case_every_read_beside_a_base_that_streams_is_answered() {
    local reads
    start_base main --transport uhid --stream
    start_model model
    expect_log model "$connected"
    for ((reads = 1; reads <= 180; ++reads)); do
        tell model refresh
    done
    wait_until 60 "the answers" answered main 181
    for ((; reads <= 200; ++reads)); do
        wait_until 20 "the model to rest" rests "${background[model]}"
        tell model refresh
        wait_until 10 "the answer" answered main $((reads + 1))
    done
    quit_model model
    expect_equal "the log" "$(cat "$ERR")" "$connected"
}
