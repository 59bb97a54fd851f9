#include "session/candidates.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

constexpr std::int64_t joystick = 4;
constexpr std::int64_t gamepad = 5;
constexpr std::int64_t unknownProduct = 0x7777;
constexpr std::int64_t pedalsProduct = 0x6204;

HIDDeviceInfo device(std::int64_t productID, std::int64_t usage, std::string id = {}) {
  HIDDeviceInfo info;
  info.id = std::move(id);
  info.vendorID = Fanatec::vendorID;
  info.productID = productID;
  info.usagePage = 1;
  info.usage = usage;
  return info;
}

TEST(Candidates, EveryKnownWheelBaseCountsWhateverItsUsage) {
  for (const FanatecProduct& product : FanatecProduct::all()) {
    const bool isBase = product.kind == ProductKind::wheelBase;
    EXPECT_EQ(isWheelBaseCandidate(device(product.productID, 0)), isBase) << product.name;
    EXPECT_EQ(isWheelBaseCandidate(device(product.productID, 1)), isBase) << product.name;
    EXPECT_EQ(isWheelBaseCandidate(device(product.productID, gamepad)), isBase) << product.name;
    EXPECT_TRUE(isWheelBaseCandidate(device(product.productID, joystick))) << product.name;
  }
}

TEST(Candidates, AnUnknownDeviceCountsWhenItIsAJoystick) {
  EXPECT_TRUE(isWheelBaseCandidate(device(unknownProduct, joystick)));
  for (const std::int64_t usage : {0, 1, 2, 3, 5, 8}) {
    EXPECT_FALSE(isWheelBaseCandidate(device(unknownProduct, usage))) << usage;
  }
}

TEST(Candidates, TheUsagePageIsNotLookedAt) {
  HIDDeviceInfo vendorSpecific = device(unknownProduct, joystick);
  vendorSpecific.usagePage = 0xFF00;
  EXPECT_TRUE(isWheelBaseCandidate(vendorSpecific));
}

TEST(Candidates, PedalsCountOnlyAsAJoystick) {
  EXPECT_TRUE(isWheelBaseCandidate(device(pedalsProduct, joystick)));
  EXPECT_FALSE(isWheelBaseCandidate(device(pedalsProduct, gamepad)));
}

TEST(Candidates, KeepTheOrderOfTheDevices) {
  const std::vector<HIDDeviceInfo> devices{
      device(unknownProduct, joystick, "unknown joystick"),
      device(pedalsProduct, 0, "pedals"),
      device(0x0020, 0, "second base"),
      device(unknownProduct, 1, "something"),
      device(0x0001, joystick, "first base"),
      device(0x0020, 1, "its other side"),
  };
  std::vector<std::string> kept;
  for (const HIDDeviceInfo& candidate : wheelBaseCandidates(devices)) kept.push_back(candidate.id);
  EXPECT_EQ(kept, (std::vector<std::string>{"unknown joystick", "second base", "first base",
                                            "its other side"}));
}

TEST(Candidates, OfNoDevicesAreNone) {
  EXPECT_TRUE(wheelBaseCandidates({}).empty());
  EXPECT_TRUE(wheelBaseCandidates({device(unknownProduct, gamepad)}).empty());
}

}  // namespace
}  // namespace quorvane
