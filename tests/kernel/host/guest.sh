# Starts the guest, prints its report as it grows, and evaluates the result.

guest_seconds=900
kernel_command_line="console=ttyS0 panic=-1 quiet nokaslr mitigations=off audit=0 no_timer_check tsc=reliable \
cryptomgr.notests 8250.nr_uarts=1 net.ifnames=0"

# run_qemu KERNEL SHARE: replaces the calling shell.
run_qemu() {
    exec timeout --kill-after=10 "$guest_seconds" qemu-system-x86_64 \
        -accel tcg,thread=multi -nodefaults -no-reboot -display none -cpu Nehalem -smp 2 -m 1024 \
        -kernel "$1" -initrd "$2/initramfs" -append "$kernel_command_line" -serial "file:$2/console" \
        -fsdev local,id=host,path=/,security_model=passthrough,multidevs=remap,readonly=on \
        -device virtio-9p-pci,fsdev=host,mount_tag=host \
        -fsdev "local,id=share,path=${2//,/,,},security_model=none" \
        -device virtio-9p-pci,fsdev=share,mount_tag=share </dev/null
}

explain_unfinished() {
    local share=$1 status=$2
    if ((status == 124 || status == 137)); then
        echo "not ok - the guest hung: stopped after $guest_seconds s"
    else
        echo "not ok - the guest died (qemu ended with status $status)"
    fi
    [[ ! -s $share/running ]] || echo "    while running: $(<"$share/running")"
    echo "    the end of its console:"
    [[ ! -e $share/console ]] || tail -n 40 "$share/console" | tr -d '\r' | sed 's/^/    | /'
}

# judge SHARE QEMU_STATUS: prints the summary line; fails unless every case ran and passed.
judge() {
    local share=$1 passed failed
    passed=$(grep -c '^ok ' "$share/report" || true)
    failed=$(grep -c '^not ok ' "$share/report" || true)
    if [[ ! -e $share/finished ]]; then
        explain_unfinished "$share" "$2"
        ((failed += 1))
    elif ((passed + failed == 0)); then
        echo "no case has a name that matches"
    fi
    echo "$passed passed, $failed failed"
    ((passed > 0 && failed == 0))
}

# run_guest KERNEL SHARE
run_guest() {
    local status=0
    (run_qemu "$1" "$2") &
    qemu=$!
    trap 'kill "$qemu" 2>/dev/null || true' EXIT
    tail --sleep-interval=0.2 --follow --lines=+1 --pid="$qemu" "$2/report"
    wait "$qemu" || status=$?
    trap - EXIT
    judge "$2" "$status"
}
