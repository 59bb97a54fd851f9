#include "session/candidates.h"

#include <algorithm>
#include <iterator>

namespace quorvane {
namespace {

constexpr std::int64_t joystickUsage = 4;

}  // namespace

bool isWheelBaseCandidate(const HIDDeviceInfo& device) {
  const auto product = FanatecProduct::lookup(device.productID);
  return (product && product->kind == ProductKind::wheelBase) || device.usage == joystickUsage;
}

bool isNamed(const HIDDeviceInfo& device, std::string_view which) {
  return !which.empty() &&
         (device.id == which || device.device->node() == which || device.serialNumber == which);
}

std::vector<HIDDeviceInfo> wheelBaseCandidates(const std::vector<HIDDeviceInfo>& devices,
                                               std::string_view which) {
  std::vector<HIDDeviceInfo> candidates;
  std::copy_if(devices.begin(), devices.end(), std::back_inserter(candidates),
               [&](const HIDDeviceInfo& device) {
                 return isWheelBaseCandidate(device) && (which.empty() || isNamed(device, which));
               });
  return candidates;
}

bool isSameDevice(const HIDDeviceInfo& a, const HIDDeviceInfo& b) {
  return a.id == b.id && a.device->node() == b.device->node();
}

std::optional<HIDDeviceInfo> findDevice(const std::vector<HIDDeviceInfo>& devices,
                                        const HIDDeviceInfo& device) {
  const auto found = std::find_if(devices.begin(), devices.end(), [&](const HIDDeviceInfo& entry) {
    return isSameDevice(entry, device);
  });
  return found == devices.end() ? std::nullopt : std::optional(*found);
}

std::vector<std::string> namesOf(const HIDDeviceInfo& device) {
  std::vector<std::string> names{device.serialNumber, device.device->node()};
  std::erase(names, std::string());
  if (names.empty()) names.push_back(device.id);
  return names;
}

}  // namespace quorvane
