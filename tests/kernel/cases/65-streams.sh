# Programs without standard streams: the node must not get descriptor 0, 1 or 2, or messages would
# go to the base.

# ctl_closed STREAMS ARGUMENT...: quorvanectl with these streams closed.
ctl_closed() {
    local streams=$1 closing= stream
    shift
    for stream in $streams; do
        closing+=" $stream>&-"
    done
    run as_user bash -c "exec quorvanectl \"\$@\"$closing" quorvanectl "$@"
}

# expect_only_our_packets NAME: the base received only complete packets for the tuning menu or the
# identity.
expect_only_our_packets() {
    local packet
    while read -r packet; do
        [[ $packet =~ ^ff\ 0[38](\ [0-9a-f]{2}){62}$ ]] || fail "'$1' received: $packet"
    done < <(received "$1")
}

# A run whose results could not be written fails. The base has the value all the same.
case_closed_streams_reach_no_base() {
    local streams value=30
    local -A statuses=(['0']=0 ['0 2']=0 ['1']=1 ['0 1']=1 ['0 1 2']=1)
    start_base main --transport uhid
    for streams in "${!statuses[@]}"; do
        ((value += 1))
        ctl_closed "$streams" set FF=$value
        expect_status "${statuses[$streams]}"
    done
    expect_on_base FF=$value
    expect_writes main "${#statuses[@]}"
    expect_only_our_packets main
}

case_a_message_on_a_closed_stream_reaches_no_base() {
    start_base main --transport usb --ignore FF
    ctl_closed '0 1 2' set FF=37
    expect_status 1
    ctl_closed '0 2' --json set FF=37
    expect_status 1
    ctl_closed '0 1 2' doctor
    expect_status 1
    ctl_closed '0 1 2' monitor
    expect_status 1
    expect_writes main 2
    expect_only_our_packets main
}

case_a_monitor_that_has_only_its_output_reaches_no_base() {
    start_base main --transport uhid
    become 1000 env --default-signal=INT bash -c 'exec quorvanectl monitor <&- 2>&-' >"$work/monitor.out" &
    background[monitor]=$!
    wait_until 20 "the first read" packets_reached main "$menu_requests" 1
    base_command main turn FF 41
    wait_until 20 "the value in the monitor's output" grep -qF 'FF 41 %' "$work/monitor.out"
    kill -INT "${background[monitor]}"
    wait_until 20 "the end of the monitor" has_ended "${background[monitor]}"
    unset "background[monitor]"
    expect_only_our_packets main
}
