#pragma once

#include <vector>

#include "hid/device_info.h"

namespace quorvane {

// Whether a device counts as a wheel base: the catalogue says so, or it presents itself as a
// joystick, which lets unknown bases in.
bool isWheelBaseCandidate(const HIDDeviceInfo& device);

// The candidates among the devices, in their order. The first one is the one to connect to.
std::vector<HIDDeviceInfo> wheelBaseCandidates(const std::vector<HIDDeviceInfo>& devices);

}  // namespace quorvane
