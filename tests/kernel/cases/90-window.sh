connected='[log] Connected to CSL DD Wheel Base'
empty='Connect a base to edit its tuning menu.'
edits=SEN=540,FF=37,SHO=40,FOR=90,SPR=80,DPR=70,NDP=60,NFR=50,FEI=50,INT=6

case_unplug_and_replug_while_a_save_runs() {
    start_window window "QUORVANE_DEMO_STAGE=$edits"
    await_state window ".message == \"$empty\" and .rows == {}"
    start_base main --transport uhid
    expect_log window "$connected"
    await_state window '.count == "10 unsaved changes" and .rows.FF == "Force feedback strength, 37 %, was 65 %"'
    click window saveButton
    wait_until 20 "the first write" packets_reached main "$menu_writes" 1
    expect_state window '.busy and (.buttons | index("saveButton") | not) and (.count | test("^Saving [0-9]+ of 10…$"))'
    unplug main
    wait_until 10 "the outcome of the save" grep -qE \
        '^\[error\] Saved [0-9] of 10; the base rejected .*INT: ' "$work/window.err"
    await_state window ".message == \"$empty\" and .rows == {} and (.busy | not)"
    plug main
    expect_log window "$connected" 2
    await_state window '.message == "" and .rows.SEN == "Sensitivity (steering angle), 540 deg"'
    await_state window '.rows.INT == "FFB interpolation filter, 6, was 11"'
    click window saveButton
    await_state window '.count == "" and .rows.INT == "FFB interpolation filter, 6"'
    quit_model window
}
