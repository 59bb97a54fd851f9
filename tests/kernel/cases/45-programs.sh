# Several programs with one base at once: each writes values of its own, and none undoes what another wrote.

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

# A program that takes no turns, and had the node open for a moment: what it wrote is read before the next write.
case_what_a_program_of_another_maker_wrote_is_kept() {
    local menu
    start_base main --transport usb
    ctl --json read
    menu=$(menu_report)
    start_model model QUORVANE_DEMO_STAGE=INT=6
    expect_log model '[log] Connected to CSL DD Wheel Base'
    # One write for the whole packet: the shell's own ends at every byte that is a line's end to it.
    # shellcheck disable=SC2059,SC2046
    printf "$(printf '\\x%s' $(sdk_write "$menu" 4 25))" |
        dd bs=64 count=1 iflag=fullblock of="$(node_of main)" conv=notrunc status=none
    tell model save
    expect_log model '[log] Saved 1 change to set C (Custom)'
    expect_on_base FF=37 INT=6
    quit_model model
}
