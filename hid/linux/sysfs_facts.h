#pragma once

#include <cstdint>
#include <vector>

#include "hid/linux/system_files.h"
#include "hid/survey.h"

namespace quorvane {

// The devices of a vendor that the kernel shows on the USB bus, in the order of their names.
std::vector<USBDeviceFacts> usbFacts(const SystemFiles& system, std::int64_t vendorID);

// Its HID devices, on whatever bus. Of their nodes only the paths are filled in.
std::vector<HIDFacts> hidFacts(const SystemFiles& system, std::int64_t vendorID);

}  // namespace quorvane
