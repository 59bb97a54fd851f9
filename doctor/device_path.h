#pragma once

#include "doctor/facts.h"

namespace quorvane {

// One base at each layer, from the USB bus to the program; null where it is missing. Points into
// the facts.
struct DevicePath {
  const USBDeviceFacts* usb = nullptr;
  const HIDFacts* hid = nullptr;
  const NodeFacts* node = nullptr;      // null also when the node does not exist
  const HIDDeviceInfo* base = nullptr;  // as enumerated for the programs

  // Whether no layer has a base.
  bool isEmpty() const { return usb == nullptr && hid == nullptr && base == nullptr; }
};

// The path of the examined base; without one, of the first device that may be a base.
DevicePath devicePathOf(const DoctorFacts& facts);

}  // namespace quorvane
