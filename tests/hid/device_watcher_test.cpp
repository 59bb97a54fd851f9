#include "hid/device_watcher.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/semaphore.h"
#include "tests/error_text.h"
#include "tests/simulator/faulty_backend.h"
#include "tests/support/eventful_clock.h"
#include "tests/support/no_threads.h"

namespace quorvane::device_watcher_test {
namespace {

using Lines = std::vector<std::string>;

constexpr std::int64_t classicBase = 0x0001;
constexpr std::int64_t directDriveBase = 0x0020;

// The simulated devices. Counts the calls that a watcher makes.
class CountedBackend final : public HIDBackend {
 public:
  explicit CountedBackend(SimulatedBackend& simulated) : simulated_(simulated) {}

  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) override {
    ++looks;
    if (whileLooking) whileLooking();
    auto found = simulated_.devices(vendorID);
    MutexLock held(lock_);
    if (leaving_) found.push_back(leaving_);
    return found;
  }

  // Adds a device that has left but is still listed; nullptr: none.
  void setLeaving(std::shared_ptr<HIDDeviceHandle> device) {
    MutexLock held(lock_);
    leaving_ = std::move(device);
  }

  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) override {
    ++monitors;
    auto monitor = simulated_.monitor(vendorID);
    if (!monitor) return nullptr;
    return std::make_unique<Monitor>(std::move(monitor), idle);
  }

  std::function<void()> whileLooking;  // called by devices(); set it only while the watcher waits
  std::atomic<int> looks = 0;          // calls of devices()
  std::atomic<int> monitors = 0;       // calls of monitor()
  Semaphore idle;                      // signalled each time before the watcher waits for an event

 private:
  class Monitor final : public HIDMonitor {
   public:
    Monitor(std::unique_ptr<HIDMonitor> monitor, Semaphore& idle)
        : monitor_(std::move(monitor)), idle_(idle) {}

    bool waitForEvent() override {
      idle_.signal();
      return monitor_->waitForEvent();
    }
    void interrupt() override { monitor_->interrupt(); }

   private:
    const std::unique_ptr<HIDMonitor> monitor_;
    Semaphore& idle_;
  };

  SimulatedBackend& simulated_;
  Mutex lock_;
  std::shared_ptr<HIDDeviceHandle> leaving_ QUORVANE_GUARDED_BY(lock_);
};

// "product@location/page:usage"
std::string name(const HIDDeviceInfo& info) {
  return fmt::format("{:04x}@{}/{:x}:{:x}", info.productID, info.locationID, info.usagePage,
                     info.usage);
}

Lines names(const std::vector<HIDDeviceInfo>& devices) {
  Lines result;
  for (const HIDDeviceInfo& device : devices) result.push_back(name(device));
  return result;
}

class DeviceWatcherTest : public testing::Test {
 protected:
  void TearDown() override {
    watcher_.reset();
    for (const auto& device : devices_) {
      EXPECT_EQ(device->violations(), Lines{});
      EXPECT_EQ(device->openPorts(), 0U);
    }
  }

  // Adds a device to the backend, which lists it while it is plugged in.
  std::shared_ptr<SimulatedDevice> add(std::int64_t productID, std::int64_t location = 0,
                                       std::int64_t page = 1, std::int64_t usage = 4) {
    auto device =
        SimulatedDevice::create(*FanatecProduct::lookup(productID), SimulatedDevice::Time::real);
    device->setProperty(HIDPropertyKey::locationID, location);
    device->setProperty(HIDPropertyKey::primaryUsagePage, page);
    device->setProperty(HIDPropertyKey::primaryUsage, usage);
    simulated_.add(device);
    devices_.push_back(device);
    return device;
  }

  void keepLists() {
    watcher_->setOnChange(
        [this](const std::vector<HIDDeviceInfo>& list) { lists_.push_back(names(list)); });
  }

  // Waits until the watcher has handled its start, or one event.
  void waitUntilIdle() { counted_.idle.wait(); }

  // Starts the watcher, and waits until it has reported the devices that are already there.
  void start() {
    watcher_->start();
    waitUntilIdle();
  }

  std::vector<Lines> takeLists() { return std::exchange(lists_, {}); }

  FaultyBackend simulated_;
  CountedBackend counted_{simulated_};
  std::vector<std::shared_ptr<SimulatedDevice>> devices_;
  std::vector<Lines> lists_;  // written by the watcher's thread, read while it is idle
  std::unique_ptr<HIDDeviceWatcher> watcher_ =
      std::make_unique<HIDDeviceWatcher>(Fanatec::vendorID, counted_);
};

TEST_F(DeviceWatcherTest, DoesNothingBeforeItsStart) {
  add(directDriveBase);
  keepLists();
  EXPECT_EQ(counted_.monitors, 0);
  EXPECT_EQ(counted_.looks, 0);
  watcher_.reset();
  EXPECT_EQ(takeLists(), std::vector<Lines>{});
}

TEST_F(DeviceWatcherTest, DeliversOneFullListForEachDeviceThatIsAlreadyThere) {
  add(directDriveBase);
  add(classicBase);
  add(directDriveBase, 7);
  keepLists();
  start();
  const Lines all{"0001@0/1:4", "0020@0/1:4", "0020@7/1:4"};
  EXPECT_EQ(takeLists(), (std::vector<Lines>{all, all, all}));
}

TEST_F(DeviceWatcherTest, DeliversNothingAtTheStartWhenNoDeviceIsThere) {
  keepLists();
  start();
  EXPECT_EQ(takeLists(), std::vector<Lines>{});
}

TEST_F(DeviceWatcherTest, DeliversTheFullSortedListAfterEveryArrivalAndRemoval) {
  keepLists();
  start();
  const auto second = add(directDriveBase, 2);
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0020@2/1:4"}}));
  const auto first = add(directDriveBase, 1);
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0020@1/1:4", "0020@2/1:4"}}));
  add(classicBase, 9);
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0001@9/1:4", "0020@1/1:4", "0020@2/1:4"}}));
  first->unplug();
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0001@9/1:4", "0020@2/1:4"}}));
  first->plug();
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0001@9/1:4", "0020@1/1:4", "0020@2/1:4"}}));
}

TEST_F(DeviceWatcherTest, ADeviceThatLeavesIsListedAsLongAsThePlatformListsIt) {
  const auto staying = add(directDriveBase, 1);
  const auto leaving = add(directDriveBase, 2);
  start();
  keepLists();
  counted_.setLeaving(leaving);
  leaving->unplug();
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0020@1/1:4", "0020@2/1:4"}}));
  counted_.setLeaving(nullptr);
  staying->unplug();
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{}}));
}

TEST_F(DeviceWatcherTest, OrdersTheInterfacesOfOneBaseByUsagePageThenUsage) {
  add(directDriveBase, 3, 0xFF00, 1);
  add(directDriveBase, 3, 1, 5);
  add(directDriveBase, 3, 1, 4);
  add(directDriveBase, 3, 0xFF00, 0);
  const Lines ordered{"0020@3/1:4", "0020@3/1:5", "0020@3/ff00:0", "0020@3/ff00:1"};
  EXPECT_EQ(names(watcher_->currentDevices()), ordered);
  keepLists();
  start();
  EXPECT_EQ(takeLists(), std::vector<Lines>(4, ordered));
}

TEST_F(DeviceWatcherTest, DeliversAListForEveryEventEvenIfNothingChanged) {
  const auto device = add(directDriveBase);
  keepLists();
  start();
  takeLists();
  device->unplug();
  waitUntilIdle();
  add(directDriveBase)->unplug();
  waitUntilIdle();
  waitUntilIdle();
  ASSERT_EQ(lists_.size(), 3U);
  EXPECT_EQ(lists_.front(), Lines{});
  EXPECT_EQ(lists_.back(), Lines{});
}

TEST_F(DeviceWatcherTest, ListsOneVendorOrAll) {
  add(directDriveBase);
  add(classicBase)->setProperty(HIDPropertyKey::vendorID, std::int64_t{0x1234});
  EXPECT_EQ(names(watcher_->currentDevices()), (Lines{"0020@0/1:4"}));
  watcher_ = std::make_unique<HIDDeviceWatcher>(std::nullopt, counted_);
  EXPECT_EQ(names(watcher_->currentDevices()), (Lines{"0001@0/1:4", "0020@0/1:4"}));
  keepLists();
  start();
  EXPECT_EQ(takeLists(), (std::vector<Lines>(2, {"0001@0/1:4", "0020@0/1:4"})));
}

TEST_F(DeviceWatcherTest, StartingTwiceCreatesOneThread) {
  add(directDriveBase);
  keepLists();
  start();
  watcher_->start();
  watcher_->start();
  EXPECT_EQ(counted_.monitors, 1);
  devices_.front()->unplug();
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0020@0/1:4"}, {}}));
}

TEST_F(DeviceWatcherTest, CallsTheHandlerOnOneThreadOfItsOwn) {
  std::vector<pthread_t> threads;
  std::string kernelName;
  watcher_->setOnChange([&](const std::vector<HIDDeviceInfo>&) {
    kernelName.resize(64);
    pthread_getname_np(pthread_self(), kernelName.data(), kernelName.size());
    kernelName.resize(kernelName.find('\0'));
    threads.push_back(pthread_self());
  });
  add(directDriveBase);
  start();
  devices_.front()->unplug();
  waitUntilIdle();
  ASSERT_EQ(threads.size(), 2U);
  EXPECT_TRUE(pthread_equal(threads[0], threads[1]));
  EXPECT_FALSE(pthread_equal(threads[0], pthread_self()));
  EXPECT_EQ(kernelName, "FanatecKit.HIDD");
}

TEST_F(DeviceWatcherTest, EventsWithoutAHandlerComputeNoList) {
  const auto device = add(directDriveBase);
  start();
  const int looksAtStart = counted_.looks;
  EXPECT_LE(looksAtStart, 1);  // one to count the devices that are there
  device->unplug();
  waitUntilIdle();
  device->plug();
  waitUntilIdle();
  EXPECT_EQ(counted_.looks, looksAtStart);

  keepLists();
  device->unplug();
  waitUntilIdle();
  EXPECT_EQ(counted_.looks, looksAtStart + 1);
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{}}));

  watcher_->setOnChange({});
  device->plug();
  waitUntilIdle();
  EXPECT_EQ(counted_.looks, looksAtStart + 1);
  EXPECT_EQ(takeLists(), std::vector<Lines>{});
}

TEST_F(DeviceWatcherTest, DescriptionsCanBeOpened) {
  add(directDriveBase);
  const auto found = watcher_->currentDevices();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found.front().device, devices_.front());
  EXPECT_EQ(found.front().device->open(false).code, HIDReturnCode::success);
}

TEST_F(DeviceWatcherTest, ReportsNothingAfterItWasStopped) {
  const auto device = add(directDriveBase);
  keepLists();
  start();
  takeLists();
  watcher_->stop();
  device->unplug();
  watcher_.reset();
  EXPECT_EQ(takeLists(), std::vector<Lines>{});
}

TEST_F(DeviceWatcherTest, NoCallBeginsOnceItIsStoppedWhileItLooksForTheFirstTime) {
  add(directDriveBase);
  keepLists();
  Gate gate;
  // The first look only counts the devices.
  counted_.whileLooking = [&gate, isFirst = true]() mutable {
    if (!std::exchange(isFirst, false)) gate.pass();
  };
  watcher_->start();
  gate.awaitArrival();
  watcher_->stop();
  gate.open();
  watcher_.reset();
  EXPECT_EQ(takeLists(), std::vector<Lines>{});
}

TEST_F(DeviceWatcherTest, NoCallBeginsOnceItIsStoppedWhileItLooksAfterAnEvent) {
  keepLists();
  start();
  Gate gate;
  counted_.whileLooking = [&gate] { gate.pass(); };
  add(directDriveBase);
  gate.awaitArrival();
  watcher_->stop();
  gate.open();
  watcher_.reset();
  EXPECT_EQ(takeLists(), std::vector<Lines>{});
}

TEST_F(DeviceWatcherTest, WithoutAThreadItIsNotStartedAndMayBeLater) {
  add(directDriveBase);
  keepLists();
  {
    const NoThreads none;
    EXPECT_EQ(errorText([&] { watcher_->start(); }),
              std::string("HID I/O failed: ") + noThreadText);
  }
  start();
  EXPECT_EQ(takeLists().size(), 1U);
}

TEST_F(DeviceWatcherTest, StoppingIsHarmlessAtAnyTime) {
  watcher_->stop();
  start();
  watcher_->stop();
  watcher_->stop();
}

TEST_F(DeviceWatcherTest, MayBeStartedAgain) {
  const auto device = add(directDriveBase);
  keepLists();
  start();
  watcher_->stop();
  device->unplug();
  device->plug();
  start();
  EXPECT_EQ(counted_.monitors, 2);
  EXPECT_EQ(takeLists(), (std::vector<Lines>(2, {"0020@0/1:4"})));
  device->unplug();
  waitUntilIdle();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{}}));
}

TEST_F(DeviceWatcherTest, StoppedInsideItsHandlerItCallsItNoMore) {
  add(directDriveBase);
  add(classicBase);
  int calls = 0;
  Semaphore stopped;
  watcher_->setOnChange([&](const std::vector<HIDDeviceInfo>&) {
    ++calls;
    watcher_->stop();
    stopped.signal();
  });
  watcher_->start();
  stopped.wait();
  devices_.front()->unplug();
  watcher_.reset();
  EXPECT_EQ(calls, 1);
}

TEST_F(DeviceWatcherTest, AHandlerMayReplaceItself) {
  const auto device = add(directDriveBase);
  int calls = 0;
  watcher_->setOnChange([&](const std::vector<HIDDeviceInfo>&) {
    ++calls;
    keepLists();
  });
  start();
  EXPECT_EQ(takeLists(), std::vector<Lines>{});
  device->unplug();
  waitUntilIdle();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{}}));
}

TEST_F(DeviceWatcherTest, AHandlerMayAskForTheDevices) {
  add(directDriveBase);
  Lines seen;
  watcher_->setOnChange(
      [&](const std::vector<HIDDeviceInfo>&) { seen = names(watcher_->currentDevices()); });
  start();
  EXPECT_EQ(seen, (Lines{"0020@0/1:4"}));
}

TEST_F(DeviceWatcherTest, DestructionWaitsForAHandlerThatRuns) {
  add(directDriveBase);
  Semaphore entered;
  Semaphore leave;
  bool left = false;
  watcher_->setOnChange([&](const std::vector<HIDDeviceInfo>&) {
    entered.signal();
    leave.wait();
    left = true;
  });
  watcher_->start();
  entered.wait();
  Thread destroyer("destroyer", [&] {
    watcher_.reset();
    EXPECT_TRUE(left);
  });
  leave.signal();
  destroyer.join();
}

TEST_F(DeviceWatcherTest, WhereNothingCanBeWatchedNoChangeIsReported) {
  simulated_.setCanWatch(false);
  const auto device = add(directDriveBase);
  keepLists();
  watcher_->start();
  device->unplug();
  device->plug();
  EXPECT_EQ(names(watcher_->currentDevices()), (Lines{"0020@0/1:4"}));
  watcher_->stop();
  EXPECT_EQ(takeLists(), std::vector<Lines>{});

  simulated_.setCanWatch(true);
  start();
  EXPECT_EQ(takeLists(), (std::vector<Lines>{{"0020@0/1:4"}}));
}

TEST_F(DeviceWatcherTest, StandsStartsAndStopsWhileDevicesComeAndGo) {
  constexpr int rounds = 200;
  const auto first = add(directDriveBase, 1);
  const auto second = add(directDriveBase, 2);
  std::atomic<bool> done = false;
  std::vector<Thread> threads;
  threads.emplace_back("plugger", [&] {
    while (!done) {
      first->unplug();
      second->unplug();
      first->plug();
      second->plug();
    }
  });
  threads.emplace_back("looker", [&] {
    while (!done) EXPECT_LE(watcher_->currentDevices().size(), 2U);
  });
  threads.emplace_back("handlers", [&] {
    while (!done) {
      watcher_->setOnChange(
          [](const std::vector<HIDDeviceInfo>& list) { EXPECT_LE(list.size(), 2U); });
      watcher_->setOnChange({});
    }
  });
  for (int i = 0; i < rounds; ++i) {
    watcher_->start();
    waitUntilIdle();
    watcher_->stop();
  }
  done = true;
  threads.clear();

  watcher_ = std::make_unique<HIDDeviceWatcher>(Fanatec::vendorID, counted_);
  while (counted_.idle.tryWait()) continue;
  keepLists();
  start();
  EXPECT_EQ(takeLists(), (std::vector<Lines>(2, {"0020@1/1:4", "0020@2/1:4"})));
}

}  // namespace
}  // namespace quorvane::device_watcher_test
