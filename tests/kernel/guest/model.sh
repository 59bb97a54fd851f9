# The application model without its window, following the kernel's devices. Sourced after processes.sh.

declare -A model_input=()

# start_model NAME [VARIABLE=VALUE...]: in the background as user ${MODEL_UID-1000}, for the base ${MODEL_DEVICE-} where
# that is set (a window only); its log is $work/NAME.err.
start_model() {
    local name=$1 input program=${MODEL_PROGRAM-quorvane-windowless}
    shift
    mkfifo "$work/$name.stdin"
    exec {input}<>"$work/$name.stdin"
    model_input[$name]=$input
    echo "\$ $* $program &"
    become "${MODEL_UID-1000}" env QUORVANE_LOG_STDERR=1 "$@" "$program" ${MODEL_DEVICE+"$MODEL_DEVICE"} \
        <"$work/$name.stdin" >"$work/$name.out" 2>"$work/$name.err" {input}>&- &
    background[$name]=$!
    mark
}

# start_window NAME [VARIABLE=VALUE...]: the same for the window, without a display.
start_window() {
    local name=$1
    shift
    MODEL_PROGRAM=quorvane-driven start_model "$name" QT_QPA_PLATFORM=offscreen "$@"
}

# tell NAME WORD...: one action.
tell() {
    local name=$1
    shift
    echo "$*" >&"${model_input[$name]}"
}

logged() {
    (($(grep -cxF -- "$2" "$work/$1.err" || true) >= $3))
}

# expect_log NAME LINE [COUNT]: the log holds LINE, or comes to hold it, at least COUNT times (once).
expect_log() {
    wait_until 20 "the log line '$2' of '$1'" logged "$1" "$2" "${3-1}"
}

shown() {
    (($(wc -l <"$work/$1.out") > $2))
}

# expect_state NAME FILTER: FILTER holds of the state that the model shows now.
expect_state() {
    local count
    count=$(wc -l <"$work/$1.out")
    tell "$1" show
    wait_until 10 "the state of '$1'" shown "$1" "$count"
    tail -n 1 "$work/$1.out" | jq -e "$2" >/dev/null || fail "does not hold: $2 of $(tail -n 1 "$work/$1.out")"
}

# await_state NAME FILTER: FILTER comes to hold.
await_state() {
    wait_until 20 "$2 of '$1'" holds "$1" "$2"
}

holds() {
    (expect_state "$1" "$2") >/dev/null
}

# quit_model NAME: it ends at once and well.
quit_model() {
    mark
    tell "$1" quit
    join "$1"
    expect_status 0
    expect_faster 2
}
