# Packets as text: bytes in lower-case hex with one space between them, as a base's transcript shows them.

# zero_padded LENGTH BYTES...: filled with 00 up to LENGTH bytes.
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

# menu_report: the raw report of the `read --json` that ran last, as words.
menu_report() {
    jq -r .tuning.raw "$OUT"
}

# sdk_write REPORT OFFSET BYTE: the write that changes one byte of REPORT, with a device byte before the block.
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

# writes: the packets of standard input that write the menu.
writes() {
    grep '^ff 03 00 ' || true
}

write_count() {
    received "$1" | writes | wc -l
}

write_count_is_at_least() {
    (($(write_count "$1") >= $2))
}
