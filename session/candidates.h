#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hid/device_info.h"

namespace quorvane {

// Whether a device counts as a wheel base: the catalogue says so, or it presents itself as a
// joystick, which lets unknown bases in.
bool isWheelBaseCandidate(const HIDDeviceInfo& device);

// Whether `which` names the device: its id, its node's path or its serial number, as a whole and in
// its case. An empty text names nothing.
bool isNamed(const HIDDeviceInfo& device, std::string_view which);

// The candidates among the devices, or those of them that `which` names, in their order. The first
// one is the one to connect to.
std::vector<HIDDeviceInfo> wheelBaseCandidates(const std::vector<HIDDeviceInfo>& devices,
                                               std::string_view which = {});

// Whether both describe the same device in the same place of the system: bases that share an id are
// told apart by their nodes.
bool isSameDevice(const HIDDeviceInfo& a, const HIDDeviceInfo& b);

// The same device as it is described among `devices`, if it is there.
std::optional<HIDDeviceInfo> findDevice(const std::vector<HIDDeviceInfo>& devices,
                                        const HIDDeviceInfo& device);

// What names the device to people and to isNamed, the most lasting first: serial number and node,
// where it has them, else its id. Never empty.
std::vector<std::string> namesOf(const HIDDeviceInfo& device);

}  // namespace quorvane
