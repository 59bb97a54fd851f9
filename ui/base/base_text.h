#pragma once

#include <string>

#include "hid/device_info.h"

// What the section "Base" says of attached bases.
namespace quorvane {

// One line, without what steers a terminal.
std::string nameOf(const HIDDeviceInfo& base);

// What tells a base from others of its name: "Product ID 0x0020, serial number A1, /dev/hidraw3,
// USB port 3-1.4", without what it does not have.
std::string detailOf(const HIDDeviceInfo& base);

// The question before a base with unsaved changes is let go for another, and what that costs.
std::string switchQuestion(const HIDDeviceInfo& other);
std::string switchCost(std::size_t unsaved, const std::string& connected);

}  // namespace quorvane
