#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// Parsers of the kernel's text files about a HID device. Pure functions.

// The `uevent` text of a HID device. Missing lines give 0 and empty texts. Of repeated lines the
// first counts: the ID precedes the texts from the device, which could forge another one.
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
// (".../0003:0EB7:0020.0001/..."). For removal events, when sysfs has no more data.
std::optional<std::int64_t> vendorInPath(std::string_view path);

// Whether an event with this action ("add", "remove", "change") can change the list of devices or
// their permissions. When a new rule is triggered, the event is a "change".
bool changesDevices(std::string_view action);

// The location ID of a USB device: the bus number in the top byte, then one nibble for each port of
// the device path, from the left (bus 3, port 1.4: 0x03140000). Ports beyond the sixth are ignored.
std::int64_t usbLocationID(std::int64_t bus, std::string_view devpath);

}  // namespace quorvane
