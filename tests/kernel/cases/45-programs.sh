# Several programs use one base at once: each writes its own values, and none undoes another's.

case_two_that_write_at_once_do_not_undo_each_other() {
    two_write_at_once 10
}

case_a_window_that_saves_and_a_command_do_not_undo_each_other() {
    local rounds=4 saves=8 save
    start_base main --transport uhid
    start_model model
    expect_log model '[log] Connected to CSL DD Wheel Base'
    start_rounds tens "$rounds" tens_values
    for ((save = 1; save <= saves; save++)); do
        tell model stage "SEN=$((500 + 10 * save)),FF=$((20 + save)),NIN=$((50 + save)),INT=$save"
        tell model save
        expect_log model '[log] Saved 4 changes to set C (Custom)' "$save"
        expect_state model ".staged == {} and .tuning.SEN == $((500 + 10 * save)) and .tuning.FF == $((20 + save))"
        expect_state model ".tuning.NIN == $((50 + save)) and .tuning.INT == $save"
    done
    finish_rounds tens "$rounds"
    # shellcheck disable=SC2046
    expect_on_base SEN=$((500 + 10 * saves)) FF=$((20 + saves)) NIN=$((50 + saves)) INT=$saves $(tens_values "$rounds")
    expect_writes main $((rounds * 7 + saves * 4))
    quit_model model
}

case_one_that_is_killed_in_its_turn_holds_nobody_up() {
    start_base main --transport uhid
    # shellcheck disable=SC2046
    start_ctl killed set $(percent_values 1)
    wait_until 20 "the first write" packets_reached main "$menu_writes" 1
    kill -KILL "${background[killed]}"
    join killed
    expect_status 137
    ctl set SHO=40
    expect_success
    expect_on_base SHO=40 SEN=510
}

# A program that does not use the write lock had the node open briefly. The next write reads its
# change first.
case_what_a_program_of_another_maker_wrote_is_kept() {
    local menu
    start_base main --transport usb
    ctl --json read
    menu=$(menu_report)
    start_model model QUORVANE_DEMO_STAGE=INT=6
    expect_log model '[log] Connected to CSL DD Wheel Base'
    # shellcheck disable=SC2046
    send_packet $(sdk_write "$menu" 4 25) 1<>"$(node_of main)"
    tell model save
    expect_log model '[log] Saved 1 change to set C (Custom)'
    expect_on_base FF=37 INT=6
    quit_model model
}

# start_with_menu TRANSPORT: starts a base, and leaves its menu in `menu`, on which foreign_write
# bases its writes.
start_with_menu() {
    start_base main --transport "$1"
    ctl --json read
    expect_success
    menu=$(menu_report)
}

# foreign_write NAME OFFSET BYTE: the program NAME writes `menu` with one byte changed.
foreign_write() {
    tell_holder "$1" "$(sdk_write "$menu" "$2" "$3")"
}

# save_in_model CODE=VALUE COUNT: saves a value, as the model's COUNTth save.
save_in_model() {
    tell model stage "$1"
    tell model save
    expect_log model '[log] Saved 1 change to set C (Custom)' "$2"
}

case_a_program_of_another_maker_that_was_there_before_is_not_undone() {
    start_with_menu uhid
    start_holder foreign "$(node_of main)"
    start_model model
    expect_log model '[log] Connected to CSL DD Wheel Base'
    foreign_write foreign 4 25
    save_in_model INT=6 1
    expect_on_base FF=37 INT=6
    quit_model model
}

case_a_program_of_another_maker_that_comes_meanwhile_is_not_undone() {
    start_with_menu usb
    start_model model
    expect_log model '[log] Connected to CSL DD Wheel Base'
    save_in_model INT=6 1
    start_holder foreign "$(node_of main)"
    save_in_model INT=7 2
    foreign_write foreign 4 25
    save_in_model SHO=40 3
    expect_on_base FF=37 SHO=40
    foreign_write foreign 5 03
    stop_holder foreign
    save_in_model SEN=540 4
    expect_on_base SHO=30 SEN=540
    quit_model model
}

# inotify merges the events of the two openings.
case_a_program_of_another_maker_that_opened_twice_and_closed_once_is_not_undone() {
    start_with_menu uhid
    start_model model
    expect_log model '[log] Connected to CSL DD Wheel Base'
    start_holder first "$(node_of main)"
    start_holder second "$(node_of main)"
    stop_holder first
    save_in_model INT=6 1
    foreign_write second 4 25
    save_in_model SHO=40 2
    expect_on_base FF=37 SHO=40
    quit_model model
}
