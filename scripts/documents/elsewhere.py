"""The commands of the documents that are not run by check-docs, and what runs them instead.

A row: the command (a pattern of the whole of it), the file that runs it, and a text that stands in
that file. Programs of this tree need no row for what .ci/run runs in the same words."""

ROWS = [
    # How the tree is built and tested.
    (r"\.ci/run", ".ci/run", 'stage "scripts/test" tests_as_documented'),
    (r"scripts/run", ".ci/run", "env -u DISPLAY -u WAYLAND_DISPLAY scripts/run"),
    (r"scripts/test", ".ci/run", "bash scripts/test"),
    (r"scripts/test -R Snapshot", "scripts/test", 'ctest --preset dev --test-dir "$build" --parallel "$(nproc)" "$@"'),
    (r"scripts/setup build", "scripts/test", "scripts/setup build"),
    (r"scripts/setup (check )?window( desktops)?( kernel)?( package lint)?", ".ci/run",
     "scripts/setup check kernel window desktops package lint"),
    (r"scripts/check-udev-rule", "scripts/check-package", "scripts/check-udev-rule --self-test"),
    (r"cmake --preset dev", "scripts/test", "cmake --preset dev"),
    (r"cmake --build --preset dev( --target \w+)?", "scripts/screenshots",
     "cmake --build --preset dev"),
    (r"ctest --preset dev", "scripts/test", "ctest --preset dev"),
    (r"scripts/suites tsan", ".ci/run", "scripts/suites tsan"),
    (r"scripts/coverage", ".ci/run", "scripts/coverage"),
    (r"build/dev/bin/\w+_test( --gtest_filter=.*)?", "cmake/QuorvaneTargets.cmake",
     "gtest_discover_tests"),
    # Installing.
    (r"scripts/package", "scripts/check-package", 'scripts/package "$build"'),
    (r"sudo apt-get install \./build/packages/\*\.deb", "scripts/check-install", "inside apt-get install -y"),
    (r"cmake --preset release", "bench/run", "cmake --preset release"),
    (r"cmake --build --preset release", "bench/run", 'cmake --build "$build"'),
    (r"sudo cmake --install build/release --prefix /usr/local", ".ci/run",
     'cmake --install build/dev --prefix "$prefix"'),
    (r"quorvanectl udev-rule \| sudo tee /etc/udev/rules.d/70-quorvane.rules",
     "tests/kernel/guest/rules.sh", "our_rule=/etc/udev/rules.d/70-quorvane.rules"),
    (r"quorvanectl udev-rule --(install|remove)",
     "tests/kernel/cases/60-permission.sh", "run quorvanectl udev-rule --install"),
    (r"sudo udevadm control --reload && sudo udevadm trigger",
     "tests/kernel/cases/60-permission.sh", "udevadm trigger"),
    (r"scripts/bundle", "scripts/check-bundle", 'scripts/bundle "$build"'),
    (r"(tar -xf|cd) quorvane-\*-linux-x86_64(\.tar\.xz)?", "scripts/check-bundle", 'tar -xf "$archive"'),
    (r"\./install --user", "scripts/check-bundle", 'in_home "$moved/install" --user'),
    (r"flatpak run --command=quorvanectl \S+ udev-rule \| sudo tee .*", "doctor/sandbox.cpp",
     "flatpak run --command=quorvanectl {} udev-rule | sudo tee"),
    (r"printf '%s\\n' .* \| sudo tee /etc/atomic-update.conf.d/quorvane.conf",
     "platform/own_udev_rule.cpp", '"/etc/atomic-update.conf.d/quorvane.conf\\n"'),
    # Releasing.
    (r'git tag -s "v\$VERSION" .*', "scripts/release", "git tag --points-at HEAD"),
    (r"scripts/release( --rehearse)?", ".ci/run", "scripts/release --rehearse build/dev"),
    # The window.
    (r"quorvane --simulate(=DD1)?", "tests/window/smoke", '"$bin/quorvane" --simulate'),
    (r"QUORVANE_LOG_STDERR=1 quorvane --simulate", "bench/parts/drawing.sh",
     'start QUORVANE_LOG_STDERR=1 "$bin/quorvane" --simulate'),
    # Tests and measurements that need more than a build.
    (r"tests/kernel/run build/dev --case \w+", ".ci/run", "tests/kernel/run build/dev"),
    (r"scripts/fuzz --seconds \d+ --jobs \d+( \w+)+", ".ci/run", "scripts/fuzz"),
    (r"tests/kernel/run --soak build/dev", "tests/kernel/run", "if [[ ${1-} == --soak ]]; then"),
    (r"bench/run( --quick| --document)?", ".ci/run", "bench/run --quick --document="),
    (r"bench/run --only [a-z-]+", "bench/run", 'source "bench/parts/$part.sh"'),
    (r"scripts/fault-table", ".ci/run", "scripts/fault-table --check build/dev"),
    (r"scripts/soak", ".ci/run", "scripts/soak --quick build/dev"),
    (r"scripts/screenshots( --readme)?", ".ci/run", "scripts/screenshots"),
]
