#include "simulator/simulated_usb_bus.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quorvane {
namespace {

class SimulatedUSBBusTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(device_->violations(), std::vector<std::string>{});
    EXPECT_EQ(device_->openPorts(), 0U);
  }

  const std::shared_ptr<SimulatedDevice> device_ = SimulatedDevice::create(
      *FanatecProduct::lookup(defaultSimulatedProduct), SimulatedDevice::Time::simulated);
  SimulatedUSBBus bus_{*device_};
};

TEST_F(SimulatedUSBBusTest, ListsTheBaseAsItDescribesItself) {
  auto listed = bus_.devices();
  ASSERT_EQ(listed.size(), 1U);
  EXPECT_EQ(listed.front()->vendorID(), Fanatec::vendorID);
  EXPECT_EQ(listed.front()->productID(), defaultSimulatedProduct);
  EXPECT_EQ(listed.front()->locationID(), std::nullopt);
  device_->setProperty(HIDPropertyKey::locationID, std::int64_t{0x03140000});
  EXPECT_EQ(listed.front()->locationID(), 0x03140000);
  device_->setProperty(HIDPropertyKey::productID, std::string("no number"));
  EXPECT_EQ(listed.front()->productID(), std::nullopt);
}

TEST_F(SimulatedUSBBusTest, IsEmptyWhileTheBaseIsUnplugged) {
  device_->unplug();
  EXPECT_TRUE(bus_.devices().empty());
  device_->plug();
  EXPECT_EQ(bus_.devices().size(), 1U);
}

TEST_F(SimulatedUSBBusTest, AResetUnplugsTheBaseAndPlugsItBackIn) {
  std::vector<bool> plugged;
  device_->setOnPlugChange([&] { plugged.push_back(device_->isPlugged()); });
  bus_.devices().front()->reset();
  EXPECT_EQ(plugged, (std::vector<bool>{false, true}));
}

}  // namespace
}  // namespace quorvane
