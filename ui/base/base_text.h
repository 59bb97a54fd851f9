#pragma once

#include <string>

#include "hid/device_info.h"

// Texts of the section "Base" about attached bases.
namespace quorvane {

// The base's name on one line, without control characters.
std::string nameOf(const HIDDeviceInfo& base);

// The details that distinguish bases of the same name: "Product ID 0x0020, serial number A1,
// /dev/hidraw3, USB port 3-1.4". Leaves out those that the base does not have.
std::string detailOf(const HIDDeviceInfo& base);

// The question before a base with unsaved changes is disconnected for another, and what is lost.
std::string switchQuestion(const HIDDeviceInfo& other);
std::string switchCost(std::size_t unsaved, const std::string& connected);

}  // namespace quorvane
