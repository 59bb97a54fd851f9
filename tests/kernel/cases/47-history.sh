# The history of writes, undo and redo, and what differs. Each case has a base with a serial number of its own, and
# with it a history of its own.

# expect_values CODE=VALUE...: on the base, in a new read.
expect_values() {
    local value
    ctl --json read
    expect_success
    for value in "$@"; do
        expect_json '.tuning.values[$code] == $value' --arg code "${value%=*}" --argjson value "${value#*=}"
    done
}

# read_values: leaves all values of the base, in a new read, in VALUES.
read_values() {
    ctl --json read
    expect_success
    VALUES=$(json -c .tuning.values "$OUT")
}

# expect_all VALUES: on the base, in a new read.
expect_all() {
    read_values
    expect_equal "the values" "$VALUES" "$1"
}

# expect_history FILTER: FILTER is true for the records of the base, newest last.
expect_history() {
    ctl --json history
    expect_success
    expect_json ".unreadableLines == 0 and (.records | $1)"
}

undo_on() {
    local before
    start_base main --transport "$1" --serial "QV-undo-$1"
    read_values
    before=$VALUES
    ctl set FF=37 INT=6
    expect_success
    expect_history 'length == 1 and (.[0].wanted | length == 2) and (.[0].outcome.results | all(.error == null))'
    ctl undo --dry-run
    expect_success
    expect_writes main 2
    ctl undo
    expect_success
    expect_all "$before"
    ctl redo
    expect_success
    expect_values FF=37 INT=6
    expect_writes main 6
    expect_history 'map(.action) == ["set", "undo", "redo"]'
}

case_a_write_is_undone_and_redone() {
    undo_on uhid
}

case_a_write_is_undone_and_redone_over_usb() {
    undo_on usb
}

case_what_was_turned_since_is_left_alone() {
    local before
    start_base main --transport uhid --serial QV-turned
    read_values
    before=$VALUES
    ctl set FF=37 INT=6
    expect_success
    base_command main turn FF 52
    expect_values FF=52
    ctl undo
    expect_success
    expect_line 'FF   left at 52 %: changed since, it was 37 %'
    expect_all "$(json -c '.FF = 52' <<<"$before")"
    expect_writes main 3
}

case_a_write_in_another_set_is_not_undone() {
    start_base main --transport uhid --serial QV-sets
    ctl set FF=37
    expect_success
    ctl mode advanced
    expect_success
    ctl undo
    expect_status 1
    expect_error_text 'Choose the other one first'
    expect_writes main 1
}

# The record is on the disk before the first packet, so a write that was killed is undone like any other.
case_a_save_that_is_killed_can_be_undone() {
    local before
    start_base main --transport uhid --serial QV-killed
    read_values
    before=$VALUES
    start_ctl killed set SEN=540 FF=37 SHO=40 INT=6 FEI=50 FFS=LIN
    wait_until 20 "the third write" packets_reached main "$menu_writes" 3
    kill -KILL "${background[killed]}"
    join killed
    expect_status 137
    expect_history 'length == 1 and .[0].outcome == null and (.[0].wanted | length == 6)'
    ctl undo
    expect_success
    expect_all "$before"
}

case_loss_of_power_in_set_a_is_seen() {
    start_base main --transport usb --serial QV-power --set 1
    ctl set FF=37 INT=6
    expect_success
    ctl presets save "Before the night"
    expect_success
    ctl diff "preset:Before the night"
    expect_success
    power_off main
    ctl diff "preset:Before the night"
    expect_status 2
    plug main
    ctl diff "preset:Before the night"
    expect_status 1
    expect_text '37'
    ctl set FF=37 INT=6
    expect_success
    ctl diff "preset:Before the night"
    expect_success
    ctl presets delete "Before the night"
    expect_success
}

# Without room on the disk, the base gets its values all the same.
case_a_full_disk_does_not_stop_a_save() {
    local state=/run/quorvane/home-1000/.local/state/Quorvane
    start_base main --transport uhid --serial QV-full
    as_user mkdir -p "$state/history"
    mount -t tmpfs -o size=4k,uid=1000,gid=1000,mode=700 none "$state/history"
    as_user dd if=/dev/zero of="$state/history/filler" bs=4k count=1 2>/dev/null || true
    ctl set FF=37
    umount "$state/history"
    expect_status 0
    expect_error_text 'Not in the history'
    expect_values FF=37
    expect_writes main 1
}
