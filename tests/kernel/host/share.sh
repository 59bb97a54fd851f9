# The directory that host and guest share. The host puts a copy of everything under test there, so
# that a build or an edit meanwhile cannot affect the run. The guest writes its results beside it.

# find_program BUILD NAME
find_program() {
    local path
    path=$(find "$1" -path "$1/kernel-tests" -prune -o -type f -name "$2" -perm -u+x -print -quit)
    if [[ -z $path ]]; then
        echo "tests/kernel: no $2 under $1; build it first" >&2
        exit 1
    fi
    echo "$path"
}

write_settings() {
    printf 'MODULES=%q\nUDEVD=%q\nUDEV_ROOT=%q\nPATTERN=%q\nCASE_SECONDS=%q\n' \
        "$kernel_dir/lib/modules" "$(udevd_path)" "${udev_root-}" "$1" "$case_seconds"
}

# installed FILE: a file of the installed package.
installed() {
    if [[ ! -f $1 ]]; then
        echo "tests/kernel: no $1; install the package quorvanectl first" >&2
        exit 1
    fi
    echo "$1"
}

# prepare_share SHARE BUILD PATTERN: with the installed files instead of the built ones if
# `use_installed` is set.
prepare_share() {
    local share=$1 build=$2 program path rule=$repository/packaging/udev/70-quorvane.rules
    rm -rf "$share"
    mkdir -p "$share"/{bin,logs}
    for program in quorvanectl quorvane-simbase quorvane-windowless quorvane-driven; do
        path=$(find_program "$build" "$program")
        cp "$path" "$share/bin/"
    done
    if [[ -n ${use_installed-} ]]; then
        cp "$(installed /usr/bin/quorvanectl)" "$share/bin/"
        rule=$(installed /usr/lib/udev/rules.d/70-quorvane.rules)
    fi
    cp -r "$tests/guest" "$share/"
    cp -r "$case_directory" "$share/cases"
    cp "$rule" "$share/"
    write_settings "$3" >"$share/settings"
    : >"$share/report"
}
