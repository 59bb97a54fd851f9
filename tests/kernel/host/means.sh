# The requirements on this machine, and the message if one is missing.

# lacking MESSAGE: ends the run, with exit status 1 if CI is set, else 77.
lacking() {
    echo "tests/kernel: $1" >&2
    echo "tests/kernel: to install what is missing: scripts/setup kernel" >&2
    [[ -z ${CI-} ]] || exit 1
    exit 77
}

is_static() {
    ! ldd "$1" >/dev/null 2>&1
}

udevd_path() {
    local path
    for path in /usr/lib/systemd/systemd-udevd /lib/systemd/systemd-udevd; do
        [[ -x $path ]] && echo "$path" && return
    done
    return 1
}

# Each line: a program and its Debian package.
required_programs() {
    cat <<'PROGRAMS'
qemu-system-x86_64 qemu-system-x86
busybox busybox-static
depmod kmod
modprobe kmod
udevadm udev
cpio cpio
gojq gojq
setpriv util-linux
apt-get apt
dpkg-deb dpkg
PROGRAMS
}

missing_programs() {
    local program package
    while read -r program package; do
        command -v "$program" >/dev/null || echo "$program (package $package)"
    done < <(required_programs)
    if command -v busybox >/dev/null && ! is_static "$(command -v busybox)"; then
        echo "a statically linked busybox (package busybox-static)"
    fi
    udevd_path >/dev/null || echo "systemd-udevd (package udev)"
}

check_means() {
    local missing
    missing=$(missing_programs)
    [[ -z $missing ]] || lacking "this machine lacks: ${missing//$'\n'/, }"
}
