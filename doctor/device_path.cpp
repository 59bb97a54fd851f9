#include "doctor/device_path.h"

#include <algorithm>

#include "session/candidates.h"

namespace quorvane {
namespace {

// Whether the product is a base, or unknown and not enumerated as something else.
bool mayBeBase(std::int64_t productID, const std::vector<HIDDeviceInfo>& devices) {
  if (const auto known = FanatecProduct::lookup(productID)) {
    return known->kind == ProductKind::wheelBase;
  }
  bool isShown = false;
  for (const HIDDeviceInfo& device : devices) {
    if (device.productID != productID) continue;
    if (isWheelBaseCandidate(device)) return true;
    isShown = true;
  }
  return !isShown;
}

template <typename Facts>
const Facts* firstBase(const std::vector<Facts>& all, const std::vector<HIDDeviceInfo>& devices) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const Facts& device) {
    return mayBeBase(device.productID, devices);
  });
  return found == all.end() ? nullptr : &*found;
}

const HIDFacts* hidWithNode(const std::vector<HIDFacts>& all, const std::string& node) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const HIDFacts& device) {
    return device.node && device.node->path == node;
  });
  return found == all.end() ? nullptr : &*found;
}

const USBDeviceFacts* usbAbove(const std::vector<USBDeviceFacts>& all, const HIDFacts& hid) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const USBDeviceFacts& device) {
    return hid.usbInterface.starts_with(device.name + ":");
  });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace

DevicePath devicePathOf(const DoctorFacts& facts) {
  const MachineFacts& machine = facts.machine;
  DevicePath path;
  if (facts.base) {
    path.base = &*facts.base;
    path.hid = hidWithNode(machine.hid, facts.base->device->node());
  } else {
    path.hid = firstBase(machine.hid, facts.devices);
  }
  path.usb = path.hid != nullptr ? usbAbove(machine.usb, *path.hid)
                                 : firstBase(machine.usb, facts.devices);
  if (path.hid != nullptr && path.hid->node && path.hid->node->exists) {
    path.node = &*path.hid->node;
  }
  return path;
}

}  // namespace quorvane
