#include "simulator/simulated_base.h"

namespace quorvane {
namespace {

constexpr std::string_view manufacturerName = "Fanatec";
constexpr std::int64_t simulatedVersion = 0x0100;

}  // namespace

// A joystick whose input report 0x01 is the wheel status (34 bytes with its ID), with short
// commands on output report 0x01 (8 bytes) and the tuning channel on report 0xFF (64 bytes each
// way).
const Bytes& SimulatedBase::reportDescriptor() {
  static const Bytes descriptor{
      0x05, 0x01,                    // Usage Page (Generic Desktop)
      0x09, 0x04,                    // Usage (Joystick)
      0xA1, 0x01,                    // Collection (Application)
      0x85, 0x01,                    //   Report ID (1)
      0x15, 0x00,                    //   Logical Minimum (0)
      0x27, 0xFF, 0xFF, 0x00, 0x00,  // Logical Maximum (65535)
      0x75, 0x10,                    //   Report Size (16)
      0x95, 0x04,                    //   Report Count (4)
      0x09, 0x30,                    //   Usage (X): steering
      0x09, 0x31,                    //   Usage (Y): throttle
      0x09, 0x32,                    //   Usage (Z): brake
      0x09, 0x35,                    //   Usage (Rz): clutch
      0x81, 0x02,                    //   Input (Data, Variable, Absolute)
      0x25, 0x07,                    //   Logical Maximum (7)
      0x75, 0x04,                    //   Report Size (4)
      0x95, 0x01,                    //   Report Count (1)
      0x09, 0x39,                    //   Usage (Hat switch)
      0x81, 0x42,                    //   Input (Data, Variable, Absolute, Null state)
      0x81, 0x03,                    //   Input (Constant)
      0x05, 0x09,                    //   Usage Page (Button)
      0x19, 0x01,                    //   Usage Minimum (1)
      0x29, 0x6C,                    //   Usage Maximum (108)
      0x25, 0x01,                    //   Logical Maximum (1)
      0x75, 0x01,                    //   Report Size (1)
      0x95, 0x6C,                    //   Report Count (108)
      0x81, 0x02,                    //   Input (Data, Variable, Absolute)
      0x95, 0x04,                    //   Report Count (4)
      0x81, 0x03,                    //   Input (Constant)
      0x06, 0x00, 0xFF,              //   Usage Page (Vendor)
      0x26, 0xFF, 0x00,              //   Logical Maximum (255)
      0x75, 0x08,                    //   Report Size (8)
      0x95, 0x0A,                    //   Report Count (10)
      0x09, 0x01,                    //   Usage (1): wheel ID and firmware version at the end
      0x81, 0x02,                    //   Input (Data, Variable, Absolute)
      0x95, 0x07,                    //   Report Count (7)
      0x09, 0x02,                    //   Usage (2): short commands
      0x91, 0x02,                    //   Output (Data, Variable, Absolute)
      0x85, 0xFF,                    //   Report ID (255)
      0x95, 0x3F,                    //   Report Count (63)
      0x09, 0x03,                    //   Usage (3): answers
      0x81, 0x02,                    //   Input (Data, Variable, Absolute)
      0x09, 0x04,                    //   Usage (4): tuning commands
      0x91, 0x02,                    //   Output (Data, Variable, Absolute)
      0xC0,                          // End Collection
  };
  return descriptor;
}

HIDProperties SimulatedBase::properties() const {
  HIDProperties properties;
  const auto put = [&](std::string_view key, HIDProperty value) {
    properties.emplace(key, std::move(value));
  };
  put(HIDPropertyKey::vendorID, Fanatec::vendorID);
  put(HIDPropertyKey::productID, productID());
  put(HIDPropertyKey::product, std::string(product_.name));
  put(HIDPropertyKey::manufacturer, std::string(manufacturerName));
  put(HIDPropertyKey::transport, std::string("USB"));
  put(HIDPropertyKey::versionNumber, simulatedVersion);
  if (!serialNumber.empty()) put(HIDPropertyKey::serialNumber, serialNumber);
  addDescriptorProperties(properties, reportDescriptor());
  return properties;
}

}  // namespace quorvane
