# Facts about a node, read directly from sysfs, to compare the program's output with.

# usb_device_of NODE: the sysfs directory of the USB device that the node belongs to.
usb_device_of() {
    local directory
    directory=$(readlink -f "/sys/class/hidraw/${1##*/}/device")
    while [[ ! -e $directory/busnum ]]; do
        [[ $directory != / ]] || fail "$1 belongs to no USB device"
        directory=${directory%/*}
        directory=${directory:-/}
    done
    echo "$directory"
}

# location_of NODE: eight hex digits: two for the bus, then one for each port on the way.
location_of() {
    local device ports port location
    device=$(usb_device_of "$1")
    printf -v location '%02x' "$(<"$device/busnum")"
    IFS=. read -ra ports <"$device/devpath"
    for port in "${ports[@]}"; do
        printf -v location '%s%x' "$location" "$port"
    done
    zero_filled "$location"
}

zero_filled() {
    local digits="${1}00000000"
    echo "${digits:0:8}"
}
