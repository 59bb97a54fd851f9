# Simulated bases behind the kernel's own device nodes. Each has a name within its case.

declare -A base_pid=() base_input=()

# is_a_base SYSFS_DIRECTORY: no process is started here, since this is asked often and starting one is slow in the guest.
is_a_base() {
    local line
    [[ -e $1/device/uevent ]] || return 1
    while read -r line; do
        [[ $line != HID_ID=0003:00000EB7:* ]] || return 0
    done <"$1/device/uevent"
    return 1
}

# list_nodes: the /dev/hidraw paths of all bases that the kernel knows now.
list_nodes() {
    local directory
    for directory in /sys/class/hidraw/*; do
        if is_a_base "$directory" 2>/dev/null; then
            echo "/dev/${directory##*/}"
        fi
    done
}

node_count_is() {
    local -a nodes
    mapfile -t nodes < <(list_nodes)
    ((${#nodes[@]} == $1))
}

# new_node BEFORE: the first node that the list BEFORE does not hold.
new_node() {
    local node
    while read -r node; do
        [[ $'\n'$1$'\n' == *$'\n'$node$'\n'* ]] || { echo "$node" && return; }
    done < <(list_nodes)
}

has_new_node() {
    [[ -n $(new_node "$1") ]]
}

udev_settles() {
    udevadm settle --timeout=20
}

# said NAME WORD COUNT: whether the base NAME has printed the line WORD at least COUNT times.
said() {
    (($(grep -cx "$2" "$work/$1.stdout" || true) >= $3))
}

# start_base NAME OPTION...: plugs a base in and waits until udev has dealt with its node, as a person would.
start_base() {
    local name=$1 before input
    shift
    before=$(list_nodes)
    mkfifo "$work/$name.stdin"
    exec {input}<>"$work/$name.stdin"
    base_input[$name]=$input
    quorvane-simbase --transcript "$work/$name.transcript" "$@" \
        <"$work/$name.stdin" >"$work/$name.stdout" 2>"$work/$name.stderr" {input}>&- &
    base_pid[$name]=$!
    wait_until 15 "the base '$name' to be plugged in" plugged_or_dead "$name"
    is_running "${base_pid[$name]}" || fail "the base '$name' ended at once: $(<"$work/$name.stderr")"
    wait_until 10 "the node of '$name'" has_new_node "$before"
    udev_settles
    new_node "$before" >"$work/$name.node"
}

plugged_or_dead() {
    said "$1" plugged 1 || has_ended "${base_pid[$1]}"
}

node_of() {
    cat "$work/$1.node"
}

# base_command NAME WORD...
base_command() {
    local name=$1
    shift
    echo "$*" >&"${base_input[$name]}"
}

# unplug NAME; plug NAME: return when the node has gone, or has come back and udev has dealt with it.
unplug() {
    local count
    count=$(list_nodes | wc -l)
    base_command "$1" unplug
    wait_until 10 "the node of '$1' to go" node_count_is $((count - 1))
    udev_settles
}

plug() {
    local before
    before=$(list_nodes)
    base_command "$1" plug
    wait_until 15 "the node of '$1' to come back" has_new_node "$before"
    udev_settles
    new_node "$before" >"$work/$1.node"
}

# stop_base NAME: fails when it has to be killed.
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

# transcript NAME; received NAME: what reached the base, one packet a line in hex.
transcript() {
    cat "$work/$1.transcript"
}

received() {
    sed -n 's/^[0-9.]* received //p' "$work/$1.transcript"
}

show_base() {
    echo "base '$1' said: $(paste -sd ' ' "$work/$1.stdout")"
    sed 's/^/    stderr: /' "$work/$1.stderr"
    tail -n 30 "$work/$1.transcript" | cut -c 1-140 | sed 's/^/    /'
}
