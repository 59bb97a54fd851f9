# Waiting, failing, and background processes. Starting a process is slow in the guest, so frequent
# steps use shell builtins only.

declare -A background=()
exec {silence}<>/run/quorvane/silence  # a pipe without a writer, for sleeping with read -t

fail() {
    echo "FAILED: $*"
    exit 1
}

# milliseconds NAME: sets the variable NAME to the time now.
milliseconds() {
    local microseconds=${EPOCHREALTIME/./}
    printf -v "$1" %s "${microseconds%???}"
}

pause() {
    read -rt "$1" -u "$silence" || true
}

# wait_until SECONDS WHAT COMMAND...: polls until COMMAND succeeds; on a time-out fails with a
# message that names WHAT.
wait_until() {
    local what=$2 deadline now
    milliseconds deadline
    ((deadline += $1 * 1000))
    shift 2
    until "$@"; do
        milliseconds now
        ((now < deadline)) || fail "waited in vain for $what"
        pause 0.05
    done
}

# count_lines FILE LINE: leaves in COUNT how often LINE occurs in FILE.
count_lines() {
    local line
    local -a lines
    mapfile -t lines <"$1"
    COUNT=0
    for line in "${lines[@]}"; do
        [[ $line != "$2" ]] || ((++COUNT))
    done
}

# show_lines FILE FIRST COUNT FORMAT: COUNT lines of FILE from the line FIRST on; FIRST below zero counts from the end.
show_lines() {
    local -a lines
    mapfile -t lines <"$1"
    if ((${#lines[@]} == 0)); then return; fi
    if (($2 < 0 && ${#lines[@]} < -$2)); then set -- "$1" 0 "$3" "$4"; fi
    # shellcheck disable=SC2059
    printf "$4\n" "${lines[@]:$2:$3}"
}

is_running() {
    kill -0 "$1" 2>/dev/null
}

has_ended() {
    ! is_running "$1"
}

# start_ctl NAME ARGUMENT...: quorvanectl in the background, output in $work/NAME.out and NAME.err.
# A shell starts background processes with SIGINT ignored, hence the reset.
start_ctl() {
    local name=$1
    shift
    echo "\$ quorvanectl $* &"
    become 1000 env --default-signal=INT,QUIT quorvanectl "$@" >"$work/$name.out" 2>"$work/$name.err" &
    background[$name]=$!
    mark
}

# mark: starts the stopwatch that take_elapsed and join read.
mark() {
    milliseconds marked
}

# take_elapsed: leaves in ELAPSED the milliseconds since the mark.
take_elapsed() {
    milliseconds ELAPSED
    ((ELAPSED -= marked)) || true
}

# interrupt NAME: sends SIGINT, as Ctrl-C does.
interrupt() {
    mark
    kill -INT "${background[$1]}"
}

# show_threads PID: what each of its threads waits for in the kernel.
show_threads() {
    local task
    for task in "/proc/$1/task"/*; do
        echo "  thread $(<"$task/comm"): $(<"$task/wchan") $(cut -d' ' -f1-4 "$task/syscall")"
        sed 's/^/    /' "$task/stack" 2>/dev/null || true
    done
}

# join NAME: waits for its end, and sets STATUS, ELAPSED, OUT and ERR.
join() {
    local name=$1 pid=${background[$1]}
    OUT="$work/$name.out" ERR="$work/$name.err" STATUS=0
    (wait_until 60 "the end of '$name'" has_ended "$pid") || {
        show_threads "$pid"
        exit 1
    }
    take_elapsed
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
