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

std::vector<HIDDeviceInfo> wheelBaseCandidates(const std::vector<HIDDeviceInfo>& devices) {
  std::vector<HIDDeviceInfo> candidates;
  std::copy_if(devices.begin(), devices.end(), std::back_inserter(candidates),
               isWheelBaseCandidate);
  return candidates;
}

}  // namespace quorvane
