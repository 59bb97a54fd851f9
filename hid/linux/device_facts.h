#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// What the kernel's text files say about a HID device. Pure functions.

// The `uevent` text of a HID device. Absent lines give 0 and empty texts; of repeated lines the
// first counts, for the ID stands before the texts that a device chooses.
struct HIDUevent {
  std::int64_t bus = 0;  // BUS_USB and so on, as in <linux/input.h>
  std::int64_t vendorID = 0;
  std::int64_t productID = 0;
  std::string name;
  std::string uniq;  // serial number

  bool operator==(const HIDUevent&) const = default;
};

HIDUevent parseHIDUevent(std::string_view text);

// "USB", "Bluetooth", "I2C", "Virtual", or empty for a bus without a name.
std::string transportName(std::int64_t bus);

// The vendor ID in a sysfs path, from the last part that names a HID device
// (".../0003:0EB7:0020.0001/..."). Removal events have no other facts left.
std::optional<std::int64_t> vendorInPath(std::string_view path);

// Whether an event with this action ("add", "remove", "change") can change which devices there are
// or who may open them. A rule that is installed and triggered grants a node by a change.
bool changesDevices(std::string_view action);

// Where a USB device is plugged in: the bus number in the top byte, then one nibble for each port
// of the device path, from the left (bus 3, port 1.4: 0x03140000). Ports beyond the sixth are left
// out.
std::int64_t usbLocationID(std::int64_t bus, std::string_view devpath);

}  // namespace quorvane
