# Several programs with one base at once: each writes values of its own, and none undoes what another wrote.

# expect_on_base CODE=VALUE...: as a fresh read of the base shows them.
expect_on_base() {
    local word filter=true
    for word in "$@"; do
        filter+=" and .tuning.values.${word%%=*} == ${word#*=}"
    done
    ctl --json read
    expect_success
    expect_json "$filter"
}

# Values for one round of each program, as words of `quorvanectl set`.
percent_values() {
    echo "SEN=$((500 + 10 * $1)) FF=$((20 + $1)) NDP=$((30 + $1)) NFR=$((40 + $1)) INT=$1 NIN=$((50 + $1)) FUL=$((60 + $1))"
}

tens_values() {
    local tens=$(($1 % 10 * 10))
    echo "SHO=$tens BLI=$tens FOR=$tens SPR=$tens DPR=$tens brF=$tens FEI=$tens"
}

# write_rounds NAME COUNT VALUES: writes what VALUES prints for each round. Every value must be read back, and all of
# them must still be there when the others have gone on.
write_rounds() {
    local name=$1 count=$2 values=$3 round
    local -a words
    work=$work/$name
    mkdir "$work"
    for ((round = 1; round <= count; round++)); do
        read -ra words <<<"$("$values" "$round")"
        ctl --json set "${words[@]}"
        expect_success
        expect_json 'all(.results[]; .error == null and .readBack == .value)'
        expect_on_base "${words[@]}"
    done
}

start_rounds() {
    write_rounds "$@" >"$work/$1.log" 2>&1 &
    background[$1]=$!
}

finish_rounds() {
    local pid=${background[$1]}
    wait_until 100 "the last round of '$1'" has_ended "$pid"
    wait "$pid" || fail "'$1' said: $(tail -n 20 "$work/$1.log")"
    unset "background[$1]"
}

case_two_that_write_at_once_do_not_undo_each_other() {
    local rounds=10
    start_base main --transport usb
    start_rounds percent "$rounds" percent_values
    start_rounds tens "$rounds" tens_values
    finish_rounds percent
    finish_rounds tens
    # shellcheck disable=SC2046
    expect_on_base $(percent_values "$rounds") $(tens_values "$rounds")
    expect_writes main $((rounds * 14))
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
    finish_rounds tens
    # shellcheck disable=SC2046
    expect_on_base SEN=$((500 + 10 * saves)) FF=$((20 + saves)) NIN=$((50 + saves)) INT=$saves $(tens_values "$rounds")
    expect_writes main $((rounds * 7 + saves * 4))
    quit_model model
}

case_one_that_is_killed_in_its_turn_holds_nobody_up() {
    start_base main --transport uhid
    # shellcheck disable=SC2046
    start_ctl killed set $(percent_values 1)
    wait_until 20 "the first write" write_count_is_at_least main 1
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
