# Waiting, failing, and processes in the background.

declare -A background=()

fail() {
    echo "FAILED: $*"
    exit 1
}

milliseconds() {
    local now=${EPOCHREALTIME/./}
    echo "${now%???}"
}

# wait_until SECONDS WHAT COMMAND...: polls until COMMAND succeeds; fails naming WHAT when it does not in time.
wait_until() {
    local what=$2 deadline=$(($(milliseconds) + $1 * 1000))
    shift 2
    until "$@"; do
        (($(milliseconds) < deadline)) || fail "waited in vain for $what"
        sleep 0.05
    done
}

is_running() {
    kill -0 "$1" 2>/dev/null
}

has_ended() {
    ! is_running "$1"
}

# start_ctl NAME ARGUMENT...: quorvanectl in the background, output in $work/NAME.out and NAME.err. A shell hides SIGINT
# from what it starts in the background, hence the reset.
start_ctl() {
    local name=$1
    shift
    echo "\$ quorvanectl $* &"
    become 1000 env --default-signal=INT,QUIT quorvanectl "$@" >"$work/$name.out" 2>"$work/$name.err" &
    background[$name]=$!
    mark
}

# mark: from here on the time is taken that join leaves in ELAPSED.
mark() {
    marked=$(milliseconds)
}

# interrupt NAME: as Ctrl-C does.
interrupt() {
    mark
    kill -INT "${background[$1]}"
}

# join NAME: waits for its end; STATUS, ELAPSED, OUT and ERR then describe it.
join() {
    local name=$1 pid=${background[$1]}
    OUT="$work/$name.out" ERR="$work/$name.err" STATUS=0
    wait_until 60 "the end of '$name'" has_ended "$pid"
    ELAPSED=$(($(milliseconds) - marked))
    wait "$pid" || STATUS=$?
    unset "background[$name]"
    show_outcome
}

stop_background() {
    local pid
    for pid in "${background[@]}"; do
        kill -KILL "$pid" 2>/dev/null || true
    done
}
