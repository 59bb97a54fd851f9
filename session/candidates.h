#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hid/device_info.h"

namespace quorvane {

// Whether a device may be a wheel base: it is one according to the catalogue, or its HID usage is
// joystick, so that unknown bases are included.
bool isWheelBaseCandidate(const HIDDeviceInfo& device);

// Whether `which` is the device's id, the path of its node or its serial number: an exact,
// case-sensitive match. An empty text matches no device.
bool isNamed(const HIDDeviceInfo& device, std::string_view which);

// The devices that may be wheel bases, in the order given; with `which`, only those that it names.
// Connect to the first.
std::vector<HIDDeviceInfo> wheelBaseCandidates(const std::vector<HIDDeviceInfo>& devices,
                                               std::string_view which = {});

// Whether both describe the same device: compares id and node, because several bases may share an
// id.
bool isSameDevice(const HIDDeviceInfo& a, const HIDDeviceInfo& b);

// The entry of `devices` for the same device, if there is one.
std::optional<HIDDeviceInfo> findDevice(const std::vector<HIDDeviceInfo>& devices,
                                        const HIDDeviceInfo& device);

// The names of the device for people and for isNamed(), the most permanent first: serial number and
// node, as far as present, else its id. Never empty.
std::vector<std::string> namesOf(const HIDDeviceInfo& device);

}  // namespace quorvane
