#pragma once

#include <cstdint>
#include <vector>

#include "platform/survey.h"
#include "platform/system_files.h"

namespace quorvane {

// The USB devices of a vendor in sysfs, sorted by name.
std::vector<USBDeviceFacts> usbFacts(const SystemFiles& system, std::int64_t vendorID);

// The HID devices of a vendor, on any bus. Of their nodes, fills in only the paths.
std::vector<HIDFacts> hidFacts(const SystemFiles& system, std::int64_t vendorID);

}  // namespace quorvane
