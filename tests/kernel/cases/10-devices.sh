reports_of_a_base='[.devices[0].reports[] | [.kind, .reportID, .byteLength]] ==
    [["input", 1, 33], ["input", 255, 63], ["output", 1, 7], ["output", 255, 63]]'

# expect_only_device ID NODE SERIAL
expect_only_device() {
    expect_json '.devices | length == 1'
    expect_json '.devices[0].id == $id' --arg id "$1"
    expect_json '.devices[0].node == $node' --arg node "$2"
    expect_json '.devices[0].serialNumber == $serial' --arg serial "$3"
    expect_json '.devices[0].name == "CSL DD / GT DD Pro / ClubSport DD"'
    expect_json '.devices[0] | .productID == 32 and .accessible == true and .commandReportID == 1'
    expect_json "$reports_of_a_base"
}

case_every_fact_of_a_base_over_uhid() {
    start_base main --transport uhid --serial QV-0001
    ctl --json devices
    expect_success
    expect_only_device '0eb7:0020@00000000/1:4' "$(node_of main)" QV-0001
}

case_every_fact_of_a_base_over_usb() {
    start_base main --transport usb --serial QV-0002
    ctl --json devices
    expect_success
    expect_only_device "0eb7:0020@$(location_of "$(node_of main)")/1:4" "$(node_of main)" QV-0002
}

case_a_base_without_a_serial_number() {
    start_base main --transport usb
    ctl --json devices
    expect_success
    expect_json '.devices[0].serialNumber == ""'
}

case_the_text_names_id_product_node_and_serial() {
    start_base main --transport uhid --serial QV-0003
    ctl devices
    expect_success
    expect_text '0eb7:0020@00000000/1:4'
    expect_text 'CSL DD / GT DD Pro / ClubSport DD'
    expect_text "$(node_of main)"
    expect_text QV-0003
}

case_another_product() {
    start_base main --transport usb --product 0e03
    ctl --json devices
    expect_success
    expect_json '.devices[0].name == "CSL Elite Wheel Base" and (.devices[0].id | startswith("0eb7:0e03@"))'
}

case_nothing_plugged_in() {
    ctl --json devices
    expect_status 0
    expect_json '. == {"devices": []}'
    expect_error_text 'No base found'
    ctl read
    expect_status 1
    expect_no_output
    expect_error_text 'HID I/O failed: device not found'
}

case_choosing_between_two_bases() {
    start_base first --transport uhid --serial QV-A --set 2
    start_base second --transport usb --serial QV-B --set 4
    ctl --json devices
    expect_json '[.devices[].serialNumber] == ["QV-A", "QV-B"]'
    local id
    id=$(json -r '.devices[1].id' "$OUT")
    ctl --json read
    expect_json '.tuning.set == 2'
    ctl --json --device QV-B read
    expect_json '.tuning.set == 4'
    ctl --json --device "$(node_of first)" read
    expect_json '.tuning.set == 2'
    ctl --json --device "$id" read
    expect_json '.tuning.set == 4'
    ctl --device QV-C read
    expect_status 1
    expect_no_output
}

case_the_same_port_keeps_the_id_over_a_replug() {
    start_base main --transport usb
    ctl --json devices
    local id
    id=$(json -r '.devices[0].id' "$OUT")
    unplug main
    plug main
    ctl --json devices
    expect_json '.devices[0].id == $id' --arg id "$id"
}
