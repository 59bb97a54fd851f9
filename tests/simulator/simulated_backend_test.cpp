#include "simulator/simulated_backend.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/simulator/faulty_backend.h"

namespace quorvane {
namespace {

constexpr std::int64_t otherVendor = 0x1234;

class SimulatedBackendTest : public testing::Test {
 protected:
  void TearDown() override {
    for (const auto& device : devices_) {
      EXPECT_EQ(device->violations(), std::vector<std::string>{});
      EXPECT_EQ(device->openPorts(), 0U);
    }
  }

  std::shared_ptr<SimulatedDevice> make(std::int64_t vendorID = Fanatec::vendorID) {
    auto device = SimulatedDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct),
                                          SimulatedDevice::Time::simulated);
    device->setProperty(HIDPropertyKey::vendorID, vendorID);
    devices_.push_back(device);
    return device;
  }

  std::shared_ptr<SimulatedDevice> add(std::int64_t vendorID = Fanatec::vendorID) {
    auto device = make(vendorID);
    backend_.add(device);
    return device;
  }

  std::size_t listed(std::optional<std::int64_t> vendorID) {
    return backend_.devices(vendorID).size();
  }

  FaultyBackend backend_;
  std::vector<std::shared_ptr<SimulatedDevice>> devices_;
};

TEST_F(SimulatedBackendTest, ListsItsDevicesWhileTheyArePlugged) {
  EXPECT_EQ(listed(std::nullopt), 0U);
  const auto first = add();
  add();
  EXPECT_EQ(listed(std::nullopt), 2U);
  first->unplug();
  const auto left = backend_.devices(std::nullopt);
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left.front(), devices_.back());
  first->plug();
  EXPECT_EQ(listed(std::nullopt), 2U);
}

TEST_F(SimulatedBackendTest, AnUnpluggedDeviceIsListedOnceItIsPlugged) {
  const auto device = make();
  device->unplug();
  backend_.add(device);
  EXPECT_EQ(listed(std::nullopt), 0U);
  device->plug();
  EXPECT_EQ(listed(std::nullopt), 1U);
}

TEST_F(SimulatedBackendTest, ListsOneVendorOrAll) {
  add();
  add(otherVendor);
  EXPECT_EQ(listed(std::nullopt), 2U);
  EXPECT_EQ(listed(Fanatec::vendorID), 1U);
  EXPECT_EQ(listed(otherVendor), 1U);
  EXPECT_EQ(listed(1), 0U);
}

TEST_F(SimulatedBackendTest, AMonitorHasOneEventForEveryChange) {
  const auto monitor = backend_.monitor(Fanatec::vendorID);
  ASSERT_NE(monitor, nullptr);
  const auto device = add();
  EXPECT_TRUE(monitor->waitForEvent());
  device->unplug();
  EXPECT_TRUE(monitor->waitForEvent());
  device->unplug();
  device->plug();
  EXPECT_TRUE(monitor->waitForEvent());
}

TEST_F(SimulatedBackendTest, AMonitorKeepsTheEventsSinceItsCreation) {
  const auto device = add();
  device->unplug();
  const auto monitor = backend_.monitor(std::nullopt);
  device->plug();
  device->unplug();
  device->plug();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(monitor->waitForEvent());
}

TEST_F(SimulatedBackendTest, EveryMonitorHasItsOwnEvents) {
  const auto first = backend_.monitor(std::nullopt);
  const auto device = add();
  const auto second = backend_.monitor(std::nullopt);
  device->unplug();
  EXPECT_TRUE(first->waitForEvent());
  EXPECT_TRUE(second->waitForEvent());
  EXPECT_TRUE(first->waitForEvent());
}

TEST_F(SimulatedBackendTest, ABaseThatLeavesInTheMiddleIsAnEvent) {
  const auto device = add();
  const auto monitor = backend_.monitor(std::nullopt);
  device->withBase([](SimulatedBase& base) { base.behaviour().unplugAfter = 1; });
  const auto port = device->open(false).port;
  const auto request = FanatecCommands::requestTuningSnapshot();
  port->write(request.reportID, request.wireBytes());
  EXPECT_TRUE(monitor->waitForEvent());
  EXPECT_EQ(listed(std::nullopt), 0U);
}

TEST_F(SimulatedBackendTest, AnInterruptEndsAMonitorForEver) {
  const auto monitor = backend_.monitor(std::nullopt);
  const auto device = add();
  monitor->interrupt();
  EXPECT_FALSE(monitor->waitForEvent());
  device->unplug();
  EXPECT_FALSE(monitor->waitForEvent());
}

TEST_F(SimulatedBackendTest, AnInterruptWakesAMonitorThatWaits) {
  const auto monitor = backend_.monitor(std::nullopt);
  Semaphore started;
  Thread watcher("watcher", [&] {
    started.signal();
    EXPECT_FALSE(monitor->waitForEvent());
  });
  started.wait();
  monitor->interrupt();
  watcher.join();
}

TEST_F(SimulatedBackendTest, HasNoMonitorsWhenItCannotWatch) {
  backend_.setCanWatch(false);
  EXPECT_EQ(backend_.monitor(std::nullopt), nullptr);
  backend_.setCanWatch(true);
  EXPECT_NE(backend_.monitor(std::nullopt), nullptr);
}

TEST_F(SimulatedBackendTest, DevicesMayBePluggedWhenItIsGone) {
  auto shortLived = std::make_unique<SimulatedBackend>();
  const auto device = make();
  shortLived->add(device);
  shortLived.reset();
  device->unplug();
  EXPECT_FALSE(device->isPlugged());
}

}  // namespace
}  // namespace quorvane
