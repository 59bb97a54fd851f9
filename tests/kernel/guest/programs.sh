# quorvanectl, run as the user at the seat unless a case says otherwise.

# become UID COMMAND...: replaces this shell with COMMAND, without groups and capabilities and with
# a home of its own.
become() {
    local uid=$1
    shift
    export HOME="/run/quorvane/home-$uid"
    exec setpriv --reuid "$uid" --regid "$uid" --clear-groups --inh-caps=-all --no-new-privs "$@"
}

as_uid() {
    (become "$@")
}

as_user() {
    as_uid 1000 "$@"
}

show_outcome() {
    echo "  exit status $STATUS after $ELAPSED ms"
    show_lines "$OUT" 0 100 '  stdout: %.4000s'
    show_lines "$ERR" 0 50 '  stderr: %.2000s'
}

# run COMMAND...: sets STATUS (exit status), ELAPSED (milliseconds), OUT and ERR (files with its
# output).
run() {
    OUT="$work/stdout" ERR="$work/stderr" STATUS=0
    echo "\$ $*"
    mark
    "$@" >"$OUT" 2>"$ERR" || STATUS=$?
    take_elapsed
    show_outcome
}

ctl() {
    run as_user quorvanectl "$@"
}

ctl_as() {
    local uid=$1
    shift
    run as_uid "$uid" quorvanectl "$@"
}

# Programs of other makers, such as games, run as the user at the seat.

declare -A holder_input=() holder_packets=()

# hold_node NODE: keeps it open, and writes the packets from standard input to it, one per line.
hold_node() {
    local -a packet
    exec 3<>"$1"
    echo open
    while read -ra packet; do
        send_packet "${packet[@]}" >&3
        echo written
    done
}

# holder_said NAME WORD COUNT
holder_said() {
    count_lines "$work/$1.stdout" "$2"
    ((COUNT >= $3))
}

# start_holder NAME NODE: starts hold_node in the background; returns when the node is open.
start_holder() {
    local name=$1 input
    mkfifo "$work/$name.stdin"
    exec {input}<>"$work/$name.stdin"
    holder_input[$name]=$input
    holder_packets[$name]=0
    become 1000 bash -c "$(declare -f hold_node send_packet)"$'\n''hold_node "$1"' "$name" "$2" \
        <"$work/$name.stdin" >"$work/$name.stdout" {input}>&- &
    background[$name]=$!
    wait_until 10 "'$name' to open $2" holder_said "$name" open 1
}

# tell_holder NAME PACKET: sends it a packet; returns when that is written.
tell_holder() {
    echo "$2" >&"${holder_input[$1]}"
    ((holder_packets[$1] += 1))
    wait_until 10 "a packet of '$1'" holder_said "$1" written "${holder_packets[$1]}"
}

# stop_holder NAME: ends it, which closes the node.
stop_holder() {
    kill "${background[$1]}"
    wait "${background[$1]}" || true
    unset "background[$1]"
}
