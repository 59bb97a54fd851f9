# The guest's initramfs: a static busybox, the kernel modules for access to this machine's files,
# and guest/init.

boot_modules=(virtio_pci 9pnet_virtio 9p overlay)

# module_files KERNEL_DIR MODULE...: the files of the modules and their dependencies, in loading
# order, each once.
module_files() {
    local directory=$1 release module
    release=$(basename "$directory")
    shift
    for module in "$@"; do
        modprobe --dirname "$directory" --set-version "$release" --config /dev/null --show-depends "$module"
    done | awk '$1 == "insmod" && !seen[$2]++ { print $2 }'
}

copy_boot_modules() {
    local file
    while read -r file; do
        cp "$file" "$2/modules/"
        basename "$file" >>"$2/modules/order"
    done < <(module_files "$1" "${boot_modules[@]}")
    [[ -s $2/modules/order ]]
}

# make_initramfs KERNEL_DIR FILE
make_initramfs() {
    local root
    root=$(mktemp -d "$(dirname "$2")/initramfs.XXXXXX")
    mkdir -p "$root"/{bin,dev,proc,modules,lower,upper,root}
    cp "$(command -v busybox)" "$root/bin/busybox"
    install -m 755 "$tests/guest/init" "$root/init"
    copy_boot_modules "$1" "$root"
    (cd "$root" && find . | cpio --quiet --create --format=newc --owner=0:0) >"$2"
    rm -r "$root"
}
