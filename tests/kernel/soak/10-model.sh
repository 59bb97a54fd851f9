# Soak tests of the model. Run by `tests/kernel/run --soak` only.

connected='[log] Connected to CSL DD Wheel Base'
allowed_growth=1024  # KiB of resident memory

descriptor_count() {
    local -a open=("/proc/${background[$1]}/fd"/*)
    echo "${#open[@]}"
}

thread_count() {
    local -a tasks=("/proc/${background[$1]}/task"/*)
    echo "${#tasks[@]}"
}

resident() {
    sed -n 's/^VmRSS:[^0-9]*\([0-9]*\) kB$/\1/p' "/proc/${background[$1]}/status"
}

thread_count_is() {
    (($(thread_count "$1") == $2))
}

# take_figures NAME: records memory, threads and descriptors of the model NAME. A base must be
# connected and the model idle.
take_figures() {
    figures=("$(resident "$1")" "$(thread_count "$1")" "$(descriptor_count "$1")")
    echo "$1: ${figures[0]} KiB resident, ${figures[1]} threads, ${figures[2]} descriptors"
}

# expect_no_growth NAME: its figures have not grown since take_figures.
expect_no_growth() {
    local -a before=("${figures[@]}")
    wait_until 10 "the threads of '$1' to end" thread_count_is "$1" "${before[1]}"
    take_figures "$1"
    expect_equal "the number of descriptors" "${figures[2]}" "${before[2]}"
    ((figures[0] - before[0] <= allowed_growth)) ||
        fail "the memory grew from ${before[0]} to ${figures[0]} KiB"
}

idle_and_connected() {
    await_state "$1" '(.busy | not) and .connected == "CSL DD Wheel Base"'
}

expect_no_errors() {
    ! grep -q '^\[error\]' "$work/$1.err" || fail "errors: $(grep '^\[error\]' "$work/$1.err" | sort | uniq -c)"
}

# The log is full after 250 rounds of the 500 lines that it keeps, but short lines need little memory.
case_200_rounds_of_unplugging_and_plugging() {
    local round
    start_base main --transport uhid
    start_model model
    expect_log model "$connected"
    for ((round = 1; round <= 200; ++round)); do
        unplug main
        expect_log model '[log] Base disconnected' "$round"
        plug main
        expect_log model "$connected" $((round + 1))
        if ((round == 20)); then
            idle_and_connected model
            take_figures model
        fi
    done
    idle_and_connected model
    expect_no_growth model
    expect_no_errors model
    quit_model model
}

# The model and a second program read while the base sends a report every millisecond. Each read
# gets its answer, and the model shows values changed on the wheel meanwhile.
case_ten_minutes_of_input_at_1_kHz() {
    local reads=1 end value=0
    figures=()
    start_base main --transport uhid --stream
    start_model model
    expect_log model "$connected"
    idle_and_connected model
    for ((end = SECONDS + 600; SECONDS < end; )); do
        tell model refresh
        wait_until 10 "the request of read $reads" packets_reached main "$menu_requests" $((++reads))
        idle_and_connected model
        value=$(((value + 1) % 100))
        base_command main turn FF "$value"
        await_state model ".tuning.FF == $value"
        if ((reads % 10 == 0)); then
            ctl --json read
            expect_success
            expect_json ".tuning.values.FF == $value"
            ((++reads))
        fi
        ((reads < 20 || ${#figures[@]} > 0)) || take_figures model
        pause 0.5
    done
    echo "$reads reads"
    ((reads > 40)) || fail "only $reads reads in ten minutes"
    expect_no_growth model
    expect_no_errors model
    quit_model model
}
