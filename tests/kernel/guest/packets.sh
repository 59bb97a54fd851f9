# Packets as text: bytes in lower-case hex with one space between them, as a base's transcript shows them.

# zero_padded LENGTH BYTES...: the bytes, padded with 00 to LENGTH bytes.
zero_padded() {
    local length=$1
    shift
    while (($# < length)); do
        set -- "$@" 00
    done
    echo "$*"
}

# tuning_packet BYTES...: a packet of the tuning channel.
tuning_packet() {
    zero_padded 64 ff "$@"
}

# menu_report: the raw report of the last `read --json`, as words.
menu_report() {
    json -r .tuning.raw "$OUT"
}

# sdk_write REPORT OFFSET BYTE: the write that changes one byte of REPORT, with the device ID before
# the block.
sdk_write() {
    local -a old new
    read -ra old <<<"$1"
    new=(ff 03 00 "${old[@]:2:61}")
    new[3]=0${new[3]:1}
    new[$2 + 1]=$3
    echo "${new[*]}"
}

# linux_write REPORT OFFSET BYTE: the same with the block in place.
linux_write() {
    local -a bytes
    read -ra bytes <<<"$1"
    bytes[2]=00
    bytes[$2]=$3
    echo "${bytes[*]}"
}

# received NAME: the packets that reached the base, one per line.
received() {
    local line
    while read -r line; do
        [[ $line != *" received "* ]] || echo "${line#* received }"
    done <"$work/$1.transcript"
}

# count_packets NAME PATTERN: leaves the number of packets that match PATTERN and reached the base
# in COUNT.
count_packets() {
    local line
    local -a lines
    mapfile -t lines <"$work/$1.transcript"
    COUNT=0
    for line in "${lines[@]}"; do
        # shellcheck disable=SC2053
        [[ $line != *" received "* || ${line#* received } != $2 ]] || ((++COUNT))
    done
}

menu_writes='ff 03 00 *'
menu_requests='ff 03 02 *'

# packets_reached NAME PATTERN COUNT: whether at least COUNT packets that match PATTERN reached the base.
packets_reached() {
    count_packets "$1" "$2"
    ((COUNT >= $3))
}

# send_packet BYTES...: to standard output, in one write. The shell's printf alone would flush at
# every 0a byte.
send_packet() {
    # shellcheck disable=SC2059
    printf "$(printf '\\x%s' "$@")" | dd bs=$# count=1 iflag=fullblock status=none
}
