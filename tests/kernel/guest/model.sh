# The application model without its window, following the kernel's devices. Sourced after processes.sh.

declare -A model_input=() model_output=()

# start_model NAME [VARIABLE=VALUE...]: starts it in the background as user ${MODEL_UID-1000}, for
# the base ${MODEL_DEVICE-} if that is set (windows only); its log is $work/NAME.err.
start_model() {
    local name=$1 input output program=${MODEL_PROGRAM-quorvane-windowless}
    shift
    mkfifo "$work/$name.stdin"
    exec {input}<>"$work/$name.stdin"
    model_input[$name]=$input
    echo "\$ $* $program &"
    : >"$work/$name.out"
    exec {output}<"$work/$name.out"
    model_output[$name]=$output
    (
        export QUORVANE_LOG_STDERR=1 "$@"
        become "${MODEL_UID-1000}" "$program" ${MODEL_DEVICE+"$MODEL_DEVICE"}
    ) <"$work/$name.stdin" >"$work/$name.out" 2>"$work/$name.err" {input}>&- {output}<&- &
    background[$name]=$!
    mark
}

# start_window NAME [VARIABLE=VALUE...]: the same for the window, without a display.
start_window() {
    local name=$1
    shift
    MODEL_PROGRAM=quorvane-driven start_model "$name" QT_QPA_PLATFORM=offscreen "$@"
}

# tell NAME WORD...: sends it one action.
tell() {
    local name=$1
    shift
    echo "$*" >&"${model_input[$name]}"
}

logged() {
    count_lines "$work/$1.err" "$2"
    ((COUNT >= $3))
}

# expect_log NAME LINE [COUNT]: waits until the log has LINE at least COUNT times (default: 1).
expect_log() {
    wait_until 20 "the log line '$2' of '$1'" logged "$1" "$2" "${3-1}"
}

# shown NAME: whether another complete line of the model can be read; adds what there is of it to
# STATE.
shown() {
    local more status=0
    IFS= read -r -u "${model_output[$1]}" more || status=$?
    STATE+=$more
    return "$status"
}

# show_state NAME: leaves the model's current state in STATE, as JSON.
show_state() {
    STATE=
    tell "$1" show
    wait_until 20 "the state of '$1'" shown "$1"
}

# expect_state NAME FILTER: FILTER is true for the model's current state.
expect_state() {
    holds "$1" "$2" || fail "does not hold: $2 of $STATE"
}

# await_state NAME FILTER: waits until FILTER is true.
await_state() {
    wait_until 20 "$2 of '$1'" holds "$1" "$2"
}

holds() {
    show_state "$1"
    json -e "$2" <<<"$STATE" >/dev/null
}

# click NAME BUTTON: clicks it as soon as it is enabled.
click() {
    await_state "$1" "any(.buttons[]; . == \"$2\")"
    tell "$1" click "$2"
}

# quit_model NAME: it must end at once and successfully.
quit_model() {
    mark
    tell "$1" quit
    join "$1"
    expect_status 0
    expect_faster 2
}
