# Starts the guest, prints its report as it grows, and evaluates the result.

kernel_command_line="console=ttyS0 panic=-1 quiet nokaslr mitigations=off audit=0 no_timer_check tsc=reliable \
cryptomgr.notests 8250.nr_uarts=1 net.ifnames=0"

# run_qemu KERNEL SHARE: replaces the calling shell.
run_qemu() {
    exec qemu-system-x86_64 \
        -accel tcg,thread=multi -nodefaults -no-reboot -display none -cpu Nehalem -smp 2 -m 1024 \
        -kernel "$1" -initrd "$2/initramfs" -append "$kernel_command_line" -serial "file:$2/console" \
        -fsdev local,id=host,path=/,security_model=passthrough,multidevs=remap,readonly=on \
        -device virtio-9p-pci,fsdev=host,mount_tag=host \
        -fsdev "local,id=share,path=${2//,/,,},security_model=none" \
        -device virtio-9p-pci,fsdev=share,mount_tag=share </dev/null
}

# stop_if_hung QEMU SHARE: ends with the guest, or stops it when no case began for longer than a case
# may take. The guest stops a case that takes too long, and the next one begins. How long all of them
# take together depends on the machine.
stop_if_hung() {
    while kill -0 "$1" 2>/dev/null; do
        if ((EPOCHSECONDS - $(stat --format=%Y "$2/running") > case_seconds + 60)); then
            : >"$2/hung"
            kill -KILL "$1"
            return
        fi
        sleep 1
    done
}

explain_unfinished() {
    local share=$1 status=$2
    if [[ -e $share/hung ]]; then
        echo "not ok - the guest hung: no case began for $((case_seconds + 60)) s"
    else
        echo "not ok - the guest died (qemu ended with status $status)"
    fi
    echo "    while running: $(<"$share/running")"
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
    echo "the start of the guest" >"$2/running"
    (run_qemu "$1" "$2") &
    qemu=$!
    trap 'kill "$qemu" 2>/dev/null || true' EXIT
    stop_if_hung "$qemu" "$2" &
    tail --sleep-interval=0.2 --follow --lines=+1 --pid="$qemu" "$2/report"
    wait "$qemu" || status=$?
    trap - EXIT
    judge "$2" "$status"
}
