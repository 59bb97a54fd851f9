#include "session/candidates.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "simulator/simulated_device.h"

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

// What distinguishes bases of the same product.
struct Place {
  std::string serialNumber;
  std::string node;
  std::int64_t locationID = 0;
};

// A base with a serial number, node and location of its own.
class PlacedDevice final : public HIDDeviceHandle {
 public:
  PlacedDevice(std::int64_t productID, Place place)
      : place_(std::move(place)),
        device_(SimulatedDevice::create(FanatecProduct::lookup(productID).value(),
                                        SimulatedDevice::Time::simulated)) {
    device_->setProperty(HIDPropertyKey::serialNumber, place_.serialNumber);
    device_->setProperty(HIDPropertyKey::locationID, place_.locationID);
  }

  std::optional<HIDProperty> property(std::string_view key) const override {
    return device_->property(key);
  }
  std::vector<HIDElement> elements() const override { return device_->elements(); }
  std::string node() const override { return place_.node; }
  bool accessible() const override { return true; }
  HIDOpenResult open(bool exclusive) override { return device_->open(exclusive); }

 private:
  const Place place_;
  const std::shared_ptr<SimulatedDevice> device_;
};

HIDDeviceInfo placed(std::int64_t productID, Place place) {
  return HIDEnumerator::info(std::make_shared<PlacedDevice>(productID, std::move(place)));
}

// A base with everything, two of one product that share an id, and one with nothing but an id.
std::vector<HIDDeviceInfo> fourBases() {
  return {placed(0x0006, {"A1", "/dev/hidraw9", 0x03140000}),
          placed(0x0020, {"B2", "/dev/hidraw4"}), placed(0x0020, {"", "/dev/hidraw5"}),
          placed(0x0001, {})};
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
  EXPECT_TRUE(wheelBaseCandidates({}, "A1").empty());
}

TEST(Candidates, AreNamedByIdNodeAndSerialNumber) {
  const std::vector<HIDDeviceInfo> bases = fourBases();
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases{
      {"", {"/dev/hidraw9", "/dev/hidraw4", "/dev/hidraw5", ""}},
      {"A1", {"/dev/hidraw9"}},
      {"/dev/hidraw5", {"/dev/hidraw5"}},
      {"0eb7:0006@03140000/1:4", {"/dev/hidraw9"}},
      {"0eb7:0020@00000000/1:4", {"/dev/hidraw4", "/dev/hidraw5"}},
      {"0eb7:0001@00000000/1:4", {""}},
      {"a1", {}},
      {"A", {}},
      {"hidraw4", {}},
      {"/dev/hidraw", {}},
      {"0eb7:0006", {}},
      {"nobody", {}},
  };
  for (const auto& [which, nodes] : cases) {
    std::vector<std::string> named;
    for (const auto& base : wheelBaseCandidates(bases, which)) named.push_back(base.device->node());
    EXPECT_EQ(named, nodes) << which;
  }
}

TEST(Candidates, NothingIsNamedByAnEmptyText) {
  for (const HIDDeviceInfo& base : fourBases()) EXPECT_FALSE(isNamed(base, "")) << base.id;
}

TEST(Candidates, ADeviceThatIsNoBaseIsNotNamed) {
  HIDDeviceInfo pedals = placed(0x0006, {"A1", "/dev/hidraw9"});
  pedals.productID = pedalsProduct;
  pedals.usage = gamepad;
  EXPECT_TRUE(wheelBaseCandidates({pedals}, "A1").empty());
}

TEST(Candidates, AreTheSameWithTheSameIdAndNode) {
  const HIDDeviceInfo base = placed(0x0020, {"B2", "/dev/hidraw4", 1});
  EXPECT_TRUE(isSameDevice(base, placed(0x0020, {"B2", "/dev/hidraw4", 1})));
  EXPECT_FALSE(isSameDevice(base, placed(0x0020, {"B2", "/dev/hidraw5", 1})));
  EXPECT_FALSE(isSameDevice(base, placed(0x0020, {"B2", "/dev/hidraw4", 2})));
  EXPECT_FALSE(isSameDevice(base, placed(0x0006, {"B2", "/dev/hidraw4", 1})));
}

// A base may have come back with the same id and node, but another description.
TEST(Candidates, AreFoundAsTheyAreDescribedInTheList) {
  const std::vector<HIDDeviceInfo> bases = fourBases();
  HIDDeviceInfo earlier = bases[2];
  earlier.serialNumber = "earlier";
  EXPECT_EQ(findDevice(bases, earlier).value().serialNumber, bases[2].serialNumber);
  EXPECT_FALSE(findDevice(bases, placed(0x0020, {"A1", "/dev/hidraw99", 1})));
  EXPECT_FALSE(findDevice({}, earlier));
}

TEST(Candidates, TellTheirNames) {
  using Names = std::vector<std::string>;
  const std::vector<HIDDeviceInfo> bases = fourBases();
  EXPECT_EQ(namesOf(bases[0]), (Names{"A1", "/dev/hidraw9"}));
  EXPECT_EQ(namesOf(bases[2]), (Names{"/dev/hidraw5"}));
  EXPECT_EQ(namesOf(bases[3]), (Names{"0eb7:0001@00000000/1:4"}));
  for (const HIDDeviceInfo& base : bases) {
    for (const std::string& name : namesOf(base)) EXPECT_TRUE(isNamed(base, name)) << name;
  }
}

}  // namespace
}  // namespace quorvane
