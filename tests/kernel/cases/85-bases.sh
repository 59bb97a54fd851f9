csl='[log] Connected to CSL DD Wheel Base'
dd1='[log] Connected to Podium Wheel Base DD1'

# Starts two bases. The DD1 is the first in the list.
start_both() {
    start_base dd1 --transport uhid --product 0006 --serial QV-A
    start_base csl --transport usb --product 0020 --serial QV-B
}

# expect_bases NAME DD1 CSL: the list shows both bases, with these words at the end of their rows.
expect_bases() {
    await_state "$1" ".bases == {\"$(node_of dd1)\": \"$2\", \"$(node_of csl)\": \"$3\"} and (.busy | not)"
}

case_another_base_is_connected_by_hand() {
    start_both
    start_window window QUORVANE_SECTION=Base
    expect_log window "$dd1"
    expect_bases window Connected ""
    click window "connect $(node_of csl)"
    expect_log window "$csl"
    expect_bases window "" Connected
    unplug csl
    expect_log window '[log] Base disconnected'
    expect_log window "$dd1" 2
    plug csl
    expect_bases window Connected ""
    quit_model window
}

case_unsaved_changes_are_asked_about_first() {
    start_both
    start_window window QUORVANE_SECTION=Base QUORVANE_DEMO_STAGE=FF=37
    expect_log window "$dd1"
    expect_bases window Connected ""
    click window "connect $(node_of csl)"
    await_state window '.question == "1 unsaved change for Podium Wheel Base DD1 will be discarded."'
    click window cancelButton
    await_state window '.question == ""'
    click window "connect $(node_of csl)"
    click window confirmButton
    expect_log window "$csl"
    expect_bases window "" Connected
    expect_writes dd1 0
    # The edits are staged for each base that is connected, so quitting asks too.
    tell window quit
    await_state window '.question | endswith("FF 37 would be lost.")'
    click window closeDiscardButton
    join window
    expect_status 0
    expect_writes csl 0
}

case_a_window_for_one_base_waits_for_it() {
    start_base dd1 --transport uhid --product 0006 --serial QV-A
    MODEL_DEVICE=QV-B start_window window QUORVANE_SECTION=Base
    wait_until 20 "the line about the base that is not there" grep -qF \
        'No base answers to "QV-B"; waiting for it. Attached: Podium Wheel Base DD1 (QV-A, /dev/hidraw' "$work/window.err"
    start_base csl --transport usb --product 0020 --serial QV-B
    expect_log window "$csl"
    expect_bases window "" Connected
    expect_packets dd1 0
    unplug csl
    expect_log window '[log] Base disconnected'
    expect_state window ".bases == {\"$(node_of dd1)\": \"\"}"
    plug csl
    expect_log window "$csl" 2
    quit_model window
}

# Both have the same id: only their nodes tell them apart.
case_two_of_a_kind_without_a_serial_number() {
    start_base first --transport uhid --set 2
    start_base second --transport uhid --set 4
    start_window window QUORVANE_SECTION=Base
    expect_log window "$csl"
    await_state window "[.bases[]] | sort == [\"\", \"Connected\"]"
    local other
    other=$(json -r <<<"$STATE" '.bases | to_entries[] | select(.value == "") | .key')
    click window "connect $other"
    expect_log window "$csl" 2
    await_state window ".bases[\"$other\"] == \"Connected\" and ([.bases[]] | sort == [\"\", \"Connected\"])"
    quit_model window
}

case_the_window_tells_why_no_base_is_found() {
    start_window window QUORVANE_SECTION=Base
    click window whyNotFoundButton
    await_state window '.checks["Wheel base attached"] == "Failed" and (.busy | not)'
    start_base main --transport usb
    expect_log window "$csl"
    await_state window '.checks == {}'
    quit_model window
}

case_the_window_tells_that_it_may_not_open_the_base() {
    start_base main --transport usb
    MODEL_UID=1001 start_window window QUORVANE_SECTION=Base
    wait_until 20 "the failure to open" grep -q '^\[error\] Could not open ' "$work/window.err"
    click window whyNotFoundButton
    await_state window '.checks["Wheel base attached"] == "Passed" and .checks["Permission"] == "Failed" and (.busy | not)'
    quit_model window
}
