# Debian's kernel, unpacked beside the build and never installed: CACHE/RELEASE holds vmlinuz and lib/modules/RELEASE.

# newest_kernel_package: the package that linux-image-amd64 depends on; empty if apt knows none.
newest_kernel_package() {
    apt-cache depends linux-image-amd64 2>/dev/null | sed -n 's/^ *Depends: \(linux-image-[0-9].*\)$/\1/p' | head -n 1
}

kernel_package() {
    local package
    package=$(newest_kernel_package)
    if [[ -z $package ]]; then
        apt-get update >&2 || return 1
        package=$(newest_kernel_package)
    fi
    [[ -n $package ]] && echo "$package"
}

download_kernel() {
    (cd "$1" && apt-get -qq -o APT::Sandbox::User=root download "$2")
}

# unpack_kernel DIRECTORY: unpacks the package in DIRECTORY to DIRECTORY/vmlinuz and
# DIRECTORY/lib/modules.
unpack_kernel() {
    local directory=$1 release
    dpkg-deb --extract "$directory"/linux-image-*.deb "$directory/package"
    release=$(basename "$directory"/package/lib/modules/*)
    mv "$directory/package/boot/vmlinuz-$release" "$directory/vmlinuz"
    mv "$directory/package/lib" "$directory/lib"
    rm -r "$directory/package" "$directory"/linux-image-*.deb
    depmod --basedir "$directory" "$release"
    echo "$release"
}

# fetch_kernel CACHE: downloads and unpacks atomically, so that an interrupted run leaves no
# incomplete kernel behind.
fetch_kernel() {
    local cache=$1 package staging release
    package=$(kernel_package) || lacking "apt knows no linux-image-amd64 (it needs a Debian source and the network)"
    echo "tests/kernel: downloading $package" >&2
    mkdir -p "$cache"
    staging=$(mktemp -d "$cache/unpacking.XXXXXX")
    if ! download_kernel "$staging" "$package"; then
        rm -r "$staging"
        lacking "$package could not be downloaded (is the network there?)"
    fi
    release=$(unpack_kernel "$staging")
    chmod 755 "$staging"
    mv "$staging" "$cache/$release"
}

cached_kernel() {
    local image
    for image in "$1"/*/vmlinuz; do
        [[ $image != */unpacking.* && -d $(dirname "$image")/lib/modules ]] && dirname "$image" && return
    done
    return 1
}

# prepare_kernel CACHE: sets kernel_dir; downloads a kernel only if the cache has none.
prepare_kernel() {
    cached_kernel "$1" >/dev/null || fetch_kernel "$1"
    kernel_dir=$(cached_kernel "$1")
}
