#pragma once

#include "doctor/facts.h"

namespace quorvane {

// One base on its way from the bus to the programs: how far it has come. Points into the facts.
struct DevicePath {
  const USBDeviceFacts* usb = nullptr;
  const HIDFacts* hid = nullptr;
  const NodeFacts* node = nullptr;      // that exists
  const HIDDeviceInfo* base = nullptr;  // as the programs see it

  // Whether there is anything of a base at all.
  bool isEmpty() const { return usb == nullptr && hid == nullptr && base == nullptr; }
};

// Follows the base that is examined; without one, the first device that may be a base.
DevicePath devicePathOf(const DoctorFacts& facts);

}  // namespace quorvane
