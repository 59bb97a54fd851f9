# Simulated bases behind the kernel's own device nodes. Each has a name within its case.

declare -A base_pid=() base_input=() base_node=()

is_a_base() {
    local line
    [[ -e $1/device/uevent ]] || return 1
    while read -r line; do
        [[ $line != HID_ID=0003:00000EB7:* ]] || return 0
    done <"$1/device/uevent"
    return 1
}

# find_nodes: leaves the /dev/hidraw paths of all current bases in the array nodes.
find_nodes() {
    local directory
    nodes=()
    for directory in /sys/class/hidraw/*; do
        if is_a_base "$directory" 2>/dev/null; then
            nodes+=("/dev/${directory##*/}")
        fi
    done
}

node_count_is() {
    find_nodes
    ((${#nodes[@]} == $1))
}

# has_new_node BEFORE: whether there is a node that is not in the array BEFORE; leaves it in
# new_node.
has_new_node() {
    local -n before=$1
    find_nodes
    for new_node in "${nodes[@]}"; do
        [[ " ${before[*]} " == *" $new_node "* ]] || return 0
    done
    return 1
}

# wait_for_node NAME KNOWN: waits until the base NAME has a node that is not in the array KNOWN, and
# udev has handled it.
wait_for_node() {
    wait_until 15 "the node of '$1'" has_new_node "$2"
    base_node[$1]=$new_node
    udev_settles
}

# udevd drops the connection of a client now and then ("Failed to wait for daemon to reply: Broken
# pipe"), which says nothing about its queue. The second attempt counts.
udev_settles() {
    udevadm settle --timeout=20 || udevadm settle --timeout=20
}

# said NAME WORD COUNT: whether the base NAME has printed the line WORD at least COUNT times.
said() {
    count_lines "$work/$1.stdout" "$2"
    ((COUNT >= $3))
}

# start_base NAME OPTION...: plugs a base in and waits until udev has handled its node.
start_base() {
    local name=$1 input
    local -a known
    shift
    find_nodes
    known=("${nodes[@]}")
    mkfifo "$work/$name.stdin"
    exec {input}<>"$work/$name.stdin"
    base_input[$name]=$input
    quorvane-simbase --transcript "$work/$name.transcript" "$@" \
        <"$work/$name.stdin" >"$work/$name.stdout" 2>"$work/$name.stderr" {input}>&- &
    base_pid[$name]=$!
    wait_until 15 "the base '$name' to be plugged in" plugged_or_dead "$name"
    is_running "${base_pid[$name]}" || fail "the base '$name' ended at once: $(<"$work/$name.stderr")"
    wait_for_node "$name" known
}

plugged_or_dead() {
    said "$1" plugged 1 || has_ended "${base_pid[$1]}"
}

node_of() {
    echo "${base_node[$1]}"
}

# base_command NAME WORD...
base_command() {
    local name=$1
    shift
    echo "$*" >&"${base_input[$name]}"
}

# unplug NAME; power_off NAME; plug NAME: return when the node is gone, or is back and udev has handled it.
unplug() {
    leave_bus "$1" unplug
}

power_off() {
    leave_bus "$1" off
}

# leave_bus NAME COMMAND
leave_bus() {
    find_nodes
    base_command "$1" "$2"
    wait_until 10 "the node of '$1' to go" node_count_is $((${#nodes[@]} - 1))
    udev_settles
}

plug() {
    local -a known
    find_nodes
    known=("${nodes[@]}")
    base_command "$1" plug
    wait_for_node "$1" known
}

# stop_base NAME: ends its process; fails if that has to be killed.
stop_base() {
    local pid=${base_pid[$1]} status=0
    base_command "$1" quit
    if ! (wait_until 10 "the base '$1' to quit" has_ended "$pid"); then
        kill -KILL "$pid"
        status=1
    fi
    unset "base_pid[$1]"
    show_base "$1"
    return "$status"
}

stop_bases() {
    local name status=0
    for name in "${!base_pid[@]}"; do
        stop_base "$name" || status=1
    done
    (wait_until 10 "every base's node to go" node_count_is 0) || status=1
    udev_settles || status=1
    return "$status"
}

show_base() {
    echo "base '$1' said:"
    show_lines "$work/$1.stdout" 0 100 '    stdout: %s'
    show_lines "$work/$1.stderr" 0 100 '    stderr: %s'
    show_lines "$work/$1.transcript" -30 30 '    %.140s'
}
