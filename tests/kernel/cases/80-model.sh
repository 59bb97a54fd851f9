connected='[log] Connected to CSL DD Wheel Base'
no_base='No base found. Power it on in PC mode and connect it to this Mac.'

case_it_finds_connects_reads_stages_and_saves() {
    start_base main --transport uhid
    start_model model QUORVANE_DEMO_STAGE=FF=37,,XYZ=1,INT=6
    expect_log model "$connected"
    expect_state model '.devices == 1 and .connected == "CSL DD Wheel Base" and .identity and (.busy | not)'
    expect_state model '.staged == {FF: 37, INT: 6} and .tuning.FF == 65'
    expect_writes main 0
    tell model save
    expect_log model '[log] Saving 2 changes…'
    expect_log model '[log] Saved 2 changes to set C (Custom)'
    expect_state model '.staged == {} and .tuning.FF == 37 and .tuning.INT == 6'
    expect_writes main 2
    quit_model model
}

case_it_waits_for_a_base() {
    start_model model
    expect_state model ".devices == 0 and .status == \"$no_base\" and (has(\"tuning\") | not)"
    start_base main --transport usb
    expect_log model "$connected"
    expect_state model '.devices == 1 and has("tuning")'
    quit_model model
}

case_it_follows_unplug_and_replug() {
    local transport
    for transport in uhid usb; do
        start_base "$transport" --transport "$transport"
        start_model "model-$transport"
        expect_log "model-$transport" "$connected"
        tell "model-$transport" stage FF=40
        unplug "$transport"
        expect_log "model-$transport" '[log] Base disconnected'
        expect_state "model-$transport" \
            ".devices == 0 and .status == \"$no_base\" and .staged == {} and (has(\"tuning\") | not)"
        plug "$transport"
        expect_log "model-$transport" "$connected" 2
        expect_state "model-$transport" '.devices == 1 and .tuning.FF == 65'
        quit_model "model-$transport"
        expect_equal "the log" "$(cat "$ERR")" "$connected"$'\n[log] Base disconnected\n'"$connected"
        stop_base "$transport"
        wait_until 10 "the node to go" node_count_is 0
    done
}

# The base leaves on the third write: three packets come before the save, and each write but the last is
# followed by its request.
case_unplug_in_the_middle_of_a_save() {
    start_base main --transport uhid --unplug-after 8
    start_model model QUORVANE_DEMO_STAGE=SEN=540,FF=37,SHO=40,INT=6,FEI=50
    expect_log model "$connected"
    tell model save
    wait_until 20 "the outcome of the save" grep -qE \
        '^\[error\] Saved 2 of 5; the base rejected SHO: .*; FEI: .*; INT: ' "$work/model.err"
    expect_log model '[log] Base disconnected'
    expect_state model '(.busy | not) and .staged == {}'
    wait_until 10 "the node to go" node_count_is 0
    plug main
    expect_log model "$connected" 2
    expect_state model '.tuning.SEN == 540 and .tuning.FF == 37 and .tuning.SHO == 40 and .tuning.FEI == 100'
    quit_model model
}

case_it_quits_in_the_middle_of_a_save() {
    start_base main --transport uhid
    start_model model QUORVANE_DEMO_STAGE=SEN=540,FF=37,SHO=40,INT=6,FEI=50
    expect_log model "$connected"
    tell model save
    wait_until 20 "the first write" packets_reached main "$menu_writes" 1
    quit_model model
}

case_a_value_turned_at_the_wheel_shows() {
    start_base main --transport uhid --stream
    start_model model
    expect_log model "$connected"
    base_command main turn FF 41
    await_state model '.tuning.FF == 41'
    quit_model model
}

case_the_other_base_takes_over() {
    start_base first --transport uhid --product 0020
    start_model model
    expect_log model "$connected"
    start_base second --transport uhid --product 0006
    await_state model '.devices == 2'
    expect_state model '.connected == "CSL DD Wheel Base"'
    unplug first
    expect_log model '[log] Base disconnected'
    wait_until 20 "the second base to be connected" grep -q '^\[log\] Connected to Podium' "$work/model.err"
    quit_model model
}

case_a_base_that_may_not_be_opened() {
    start_base main --transport uhid
    MODEL_UID=1001 start_model model
    wait_until 20 "the error" grep -q \
        '^\[error\] Could not open CSL DD / GT DD Pro / ClubSport DD: HID I/O failed: not permitted' "$work/model.err"
    expect_state model '.devices == 1 and .connected == "" and (.busy | not)'
    quit_model model
}

case_presets_are_kept_in_the_home_directory() {
    start_base main --transport uhid
    start_model model
    expect_log model "$connected"
    tell model capture Night race
    expect_log model '[log] Saved preset "Night race"'
    quit_model model
    start_model again
    expect_state again '.presets == 1'
    quit_model again
    ctl --json presets show 'Night race'
    expect_success
    expect_json '.presets[0] | .name == "Night race" and .game == "Custom" and .values.FF == 65'
    [[ -f /run/quorvane/home-1000/.local/share/Quorvane/presets.json ]] || fail "no preset file"
}
