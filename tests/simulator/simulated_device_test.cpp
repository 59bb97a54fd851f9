#include "simulator/simulated_device.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/hid_codes.h"
#include "tests/simulator/faulty_device.h"

namespace quorvane {
namespace {

using Lines = std::vector<std::string>;

// A port of a device with a reader thread, like a connection.
class Reader {
 public:
  explicit Reader(SimulatedDevice& device, bool exclusive = false)
      : port_(device.open(exclusive).port) {
    thread_ = Thread("reader", [this] {
      Bytes buffer(65);
      for (;;) {
        const auto result = port_->read(buffer);
        if (result.code != HIDReturnCode::success) {
          MutexLock held(lock_);
          end_ = result.code;
          return;
        }
        MutexLock held(lock_);
        reports_.emplace_back(buffer.begin(),
                              buffer.begin() + static_cast<std::ptrdiff_t>(result.length));
        answered_.signal();
      }
    });
  }

  ~Reader() { stop(); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  HIDPort& port() { return *port_; }
  Semaphore& answered() { return answered_; }  // signalled with every report

  std::vector<Bytes> takeReports() {
    MutexLock held(lock_);
    return std::exchange(reports_, {});
  }

  // Interrupts the reader. Returns the code that ended it.
  HIDReturn stop() {
    port_->interrupt();
    return join();
  }

  HIDReturn join() {
    thread_.join();
    MutexLock held(lock_);
    return end_;
  }

 private:
  const std::unique_ptr<HIDPort> port_;
  Semaphore answered_;
  Mutex lock_;
  std::vector<Bytes> reports_ QUORVANE_GUARDED_BY(lock_);
  HIDReturn end_ QUORVANE_GUARDED_BY(lock_) = HIDReturnCode::success;
  Thread thread_;
};

class SimulatedDeviceTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(device_->violations(), Lines{});
    EXPECT_EQ(device_->openPorts(), 0U);
  }

  static std::shared_ptr<FaultyDevice> create(SimulatedDevice::Time time) {
    return FaultyDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct), time);
  }

  HIDReturn send(HIDPort& port, const HIDReportPacket& packet) {
    return port.write(packet.reportID, packet.wireBytes());
  }

  HIDReturn ask(HIDPort& port) { return send(port, FanatecCommands::requestTuningSnapshot()); }

  Bytes menuReport() {
    Bytes report;
    device_->withBase([&](SimulatedBase& base) { report = base.menu().report(); });
    return report;
  }

  void behave(const std::function<void(SimulatedBehaviour&)>& change) {
    device_->withBase([&](SimulatedBase& base) { change(base.behaviour()); });
  }

  Lines takeTranscript() {
    Lines lines = device_->transcript().lines();
    device_->transcript().clear();
    return lines;
  }

  // How many seconds have passed on the device's clock.
  double elapsed() { return Seconds(device_->clock().now() - start_).count(); }

  const std::shared_ptr<FaultyDevice> device_ = create(SimulatedDevice::Time::simulated);
  const Monotonic::time_point start_ = device_->clock().now();
};

TEST_F(SimulatedDeviceTest, RefusesWhatTheKernelTakesForNoReport) {
  constexpr HIDReturn invalid = 0x0000C016;
  const auto port = device_->open(false).port;
  EXPECT_EQ(port->write(0xFF, Bytes(1, 0xFF)), invalid);
  EXPECT_EQ(port->write(0, Bytes{}), invalid);
  EXPECT_EQ(port->write(0xFF, Bytes(16385, 0xFF)), invalid);
  EXPECT_EQ(port->write(0, Bytes(16384)), invalid);
  device_->unplug();
  EXPECT_EQ(port->write(0xFF, Bytes(1, 0xFF)), HIDReturnCode::noDevice);
}

TEST_F(SimulatedDeviceTest, SaysWhatItsBaseSays) {
  const auto product = device_->property(HIDPropertyKey::productID);
  ASSERT_TRUE(product);
  EXPECT_TRUE(*product == HIDProperty(defaultSimulatedProduct));
  EXPECT_FALSE(device_->property(HIDPropertyKey::locationID));
  device_->setProperty(HIDPropertyKey::locationID, std::int64_t{7});
  device_->setProperty(HIDPropertyKey::productID, std::int64_t{8});
  EXPECT_TRUE(*device_->property(HIDPropertyKey::locationID) == HIDProperty(std::int64_t{7}));
  EXPECT_TRUE(*device_->property(HIDPropertyKey::productID) == HIDProperty(std::int64_t{8}));
  EXPECT_EQ(device_->node(), "");
  EXPECT_TRUE(device_->accessible());
  EXPECT_EQ(device_->elements().size(),
            HIDElements::parse(SimulatedBase::reportDescriptor()).elements.size());
}

TEST_F(SimulatedDeviceTest, OpensAndCloses) {
  auto opened = device_->open(false);
  EXPECT_EQ(opened.code, HIDReturnCode::success);
  EXPECT_EQ(device_->openPorts(), 1U);
  opened.port.reset();
  EXPECT_EQ(device_->openPorts(), 0U);
  opened = device_->open(true);
  opened.port.reset();
  EXPECT_EQ(takeTranscript(), (Lines{"open", "close", "open exclusive", "close"}));
}

TEST_F(SimulatedDeviceTest, ManyOpenItSharedAndOnlyOneExclusive) {
  {
    const auto first = device_->open(false);
    const auto second = device_->open(false);
    EXPECT_EQ(second.code, HIDReturnCode::success);
    const auto exclusive = device_->open(true);
    EXPECT_EQ(exclusive.code, HIDReturnCode::exclusiveAccess);
    EXPECT_EQ(exclusive.port, nullptr);
    EXPECT_EQ(device_->openPorts(), 2U);
  }
  const auto exclusive = device_->open(true);
  EXPECT_EQ(exclusive.code, HIDReturnCode::success);
  EXPECT_EQ(device_->open(false).code, HIDReturnCode::exclusiveAccess);
  EXPECT_EQ(device_->open(true).code, HIDReturnCode::exclusiveAccess);
}

TEST_F(SimulatedDeviceTest, CannotBeOpenedWhenToldSoOrUnplugged) {
  device_->failOpenWith(HIDReturnCode::notPermitted);
  EXPECT_EQ(device_->open(false).code, HIDReturnCode::notPermitted);
  EXPECT_EQ(device_->open(true).code, HIDReturnCode::notPermitted);
  device_->failOpenWith(HIDReturnCode::success);
  device_->unplug();
  EXPECT_EQ(device_->open(false).code, HIDReturnCode::noDevice);
  device_->plug();
  EXPECT_EQ(device_->open(false).code, HIDReturnCode::success);
}

TEST_F(SimulatedDeviceTest, AnswersThroughItsPort) {
  Reader reader(*device_);
  EXPECT_EQ(ask(reader.port()), HIDReturnCode::success);
  device_->waitUntilQuiet();
  EXPECT_EQ(reader.takeReports(), (std::vector<Bytes>{menuReport()}));
  EXPECT_EQ(takeTranscript(), (Lines{"open", "> ff 03 02 +61"}));
  EXPECT_EQ(reader.stop(), HIDReturnCode::aborted);
}

TEST_F(SimulatedDeviceTest, EveryPortGetsEveryReport) {
  Reader first(*device_);
  Reader second(*device_);
  ask(first.port());
  device_->sendReport({1, 2});
  device_->waitUntilQuiet();
  const std::vector<Bytes> expected{menuReport(), {1, 2}};
  EXPECT_EQ(first.takeReports(), expected);
  EXPECT_EQ(second.takeReports(), expected);
}

TEST_F(SimulatedDeviceTest, ReportsThatNoPortWasOpenForAreLost) {
  device_->sendReport({1, 2});
  Reader reader(*device_);
  device_->sendReport({1, 3});
  device_->waitUntilQuiet();
  EXPECT_EQ(reader.takeReports(), (std::vector<Bytes>{{1, 3}}));
}

TEST_F(SimulatedDeviceTest, ALongReportIsCutToTheBufferAndNamesItsID) {
  const auto port = device_->open(false).port;
  device_->sendReport({0xFF, 1, 2, 3});
  device_->sendReport({});
  std::array<std::uint8_t, 2> buffer{};
  auto result = port->read(buffer);
  EXPECT_EQ(result.code, HIDReturnCode::success);
  EXPECT_EQ(result.reportID, 0xFF);
  EXPECT_EQ(result.length, 2U);
  EXPECT_EQ(buffer, (std::array<std::uint8_t, 2>{0xFF, 1}));
  result = port->read(buffer);
  EXPECT_EQ(result.code, HIDReturnCode::success);
  EXPECT_EQ(result.length, 0U);
}

TEST_F(SimulatedDeviceTest, AnInterruptEndsAReadThatWaitsAndOneThatComes) {
  Reader reader(*device_);
  EXPECT_EQ(reader.stop(), HIDReturnCode::aborted);

  const auto port = device_->open(false).port;
  port->interrupt();
  device_->sendReport({1, 2});
  Bytes buffer(8);
  EXPECT_EQ(port->read(buffer).code, HIDReturnCode::aborted);
}

TEST_F(SimulatedDeviceTest, ReadersEndWhenItIsUnplugged) {
  Reader first(*device_);
  Reader second(*device_);
  device_->unplug();
  EXPECT_EQ(first.join(), HIDReturnCode::noDevice);
  EXPECT_EQ(second.join(), HIDReturnCode::noDevice);
  EXPECT_EQ(ask(first.port()), HIDReturnCode::noDevice);
  std::array<std::uint8_t, 8> buffer{};
  std::size_t length = buffer.size();
  EXPECT_EQ(first.port().getReport(HIDReportKind::input, 1, buffer, length),
            HIDReturnCode::noDevice);
}

TEST_F(SimulatedDeviceTest, WhatWasOpenedBeforeAReplugStaysDead) {
  const auto before = device_->open(true).port;
  device_->unplug();
  device_->plug();
  Bytes buffer(65);
  std::size_t length = buffer.size();
  EXPECT_EQ(ask(*before), HIDReturnCode::noDevice);
  EXPECT_EQ(before->getReport(HIDReportKind::input, 0xFF, buffer, length), HIDReturnCode::noDevice);

  const auto after = device_->open(true).port;
  ASSERT_TRUE(after);
  EXPECT_EQ(ask(*after), HIDReturnCode::success);
  EXPECT_EQ(before->read(buffer).code, HIDReturnCode::noDevice);
  EXPECT_EQ(after->read(buffer).length, 64U);
}

TEST_F(SimulatedDeviceTest, GivesReportsOnDemand) {
  const auto port = device_->open(false).port;
  Bytes buffer(65);
  std::size_t length = buffer.size();
  EXPECT_EQ(port->getReport(HIDReportKind::input, 0xFF, buffer, length), HIDReturnCode::success);
  EXPECT_EQ(length, 64U);
  buffer.resize(length);
  EXPECT_EQ(buffer, menuReport());

  Bytes small(4);
  length = small.size();
  EXPECT_EQ(port->getReport(HIDReportKind::input, 0xFF, small, length), HIDReturnCode::success);
  EXPECT_EQ(length, 4U);
  EXPECT_EQ(port->getReport(HIDReportKind::feature, 0xFF, small, length),
            HIDReturnCode::generalError);
  EXPECT_EQ(takeTranscript(), (Lines{"open"}));
}

TEST_F(SimulatedDeviceTest, ARefusedPacketIsInTheTranscriptWithItsCode) {
  const auto port = device_->open(false).port;
  behave([](SimulatedBehaviour& b) { b.failSendsWith = otherCode; });
  EXPECT_EQ(ask(*port), otherCode);
  EXPECT_EQ(takeTranscript(), (Lines{"open", "> ff 03 02 +61 failed 0x0000C005"}));
}

TEST_F(SimulatedDeviceTest, AValueTurnedAtTheWheelReachesItsReaders) {
  Reader reader(*device_);
  device_->turn(TuningParameter::forceFeedback, 42);
  device_->waitUntilQuiet();
  EXPECT_EQ(reader.takeReports(), (std::vector<Bytes>{menuReport()}));
}

TEST_F(SimulatedDeviceTest, TellsWhenItIsPluggedAndUnpluggedAndOnlyThen) {
  std::vector<bool> seen;
  device_->setOnPlugChange([&] { seen.push_back(device_->isPlugged()); });
  device_->unplug();
  device_->unplug();
  device_->plug();
  device_->plug();
  device_->withBase([](SimulatedBase&) {});
  EXPECT_EQ(seen, (std::vector<bool>{false, true}));

  behave([](SimulatedBehaviour& b) { b.unplugAfter = 1; });
  const auto port = device_->open(false).port;
  ask(*port);
  EXPECT_EQ(seen, (std::vector<bool>{false, true, false}));
}

TEST_F(SimulatedDeviceTest, APauseOfItsClockMovesTimeAndIsRecorded) {
  device_->clock().sleepFor(Seconds(0.25));
  device_->clock().sleepFor(Seconds(0.002));
  device_->clock().sleepFor(Seconds(1.5));
  EXPECT_EQ(takeTranscript(), (Lines{"pause 250 ms", "pause 2 ms", "pause 1500 ms"}));
  EXPECT_EQ(elapsed(), 1.752);
}

TEST_F(SimulatedDeviceTest, AWaitEndsWithTheAnswerAtTheTimeThatItIsDue) {
  Reader reader(*device_);
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(1.5); });
  ask(reader.port());
  EXPECT_TRUE(device_->clock().wait(reader.answered(), Seconds(2)));
  EXPECT_EQ(elapsed(), 1.5);
  EXPECT_EQ(reader.takeReports(), (std::vector<Bytes>{menuReport()}));
}

TEST_F(SimulatedDeviceTest, AWaitForNothingPassesItsTimeAtOnce) {
  Reader reader(*device_);
  EXPECT_FALSE(device_->clock().wait(reader.answered(), Seconds(2)));
  EXPECT_EQ(elapsed(), 2.0);
  EXPECT_FALSE(device_->clock().wait(reader.answered(), Seconds(0)));
  EXPECT_EQ(elapsed(), 2.0);

  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(2.5); });
  ask(reader.port());
  EXPECT_FALSE(device_->clock().wait(reader.answered(), Seconds(2)));
  EXPECT_EQ(elapsed(), 4.0);
  EXPECT_TRUE(device_->clock().wait(reader.answered(), Seconds(2)));
  EXPECT_EQ(elapsed(), 4.5);
}

TEST_F(SimulatedDeviceTest, AWaitTakesACountThatIsThere) {
  Semaphore semaphore;
  semaphore.signal();
  EXPECT_TRUE(device_->clock().wait(semaphore, Seconds(0)));
  EXPECT_FALSE(device_->clock().wait(semaphore, Seconds(0)));
  EXPECT_EQ(elapsed(), 0.0);
}

TEST_F(SimulatedDeviceTest, AWaitPassesWhenThePortIsClosedBeforeTheAnswer) {
  for (const double delay : {0.0, 0.5}) {
    behave([&](SimulatedBehaviour& b) { b.answerDelay = Seconds(delay); });
    const double before = elapsed();
    auto port = device_->open(false).port;
    ask(*port);
    port.reset();
    Semaphore never;
    EXPECT_FALSE(device_->clock().wait(never, Seconds(2)));
    EXPECT_EQ(elapsed(), before + 2.0);
  }
}

TEST_F(SimulatedDeviceTest, AWaitPassesWhenTheBaseLeaves) {
  Reader reader(*device_);
  behave([](SimulatedBehaviour& b) { b.unplugAfter = 1; });
  ask(reader.port());
  EXPECT_FALSE(device_->clock().wait(reader.answered(), Seconds(2)));
  EXPECT_EQ(elapsed(), 2.0);
}

TEST_F(SimulatedDeviceTest, WaitsOnManyThreadsNeverMoveTimeBack) {
  Reader reader(*device_);
  {
    std::array<Thread, 3> threads;
    for (Thread& thread : threads) {
      thread = Thread("waiting", [&] {
        Semaphore never;
        for (int n = 0; n < 50; ++n) {
          const auto before = device_->clock().now();
          ask(reader.port());
          EXPECT_FALSE(device_->clock().wait(never, Seconds(0.01)));
          EXPECT_GE(device_->clock().now(), before + std::chrono::milliseconds(10));
        }
      });
    }
  }
  device_->waitUntilQuiet();
  EXPECT_EQ(reader.takeReports().size(), 150U);
}

TEST_F(SimulatedDeviceTest, QuietMeansThatEveryReaderHasHandledWhatIsDue) {
  device_->waitUntilQuiet();
  Reader first(*device_);
  Reader second(*device_);
  for (int i = 1; i <= 100; ++i) {
    device_->sendReport({1, 2});
    device_->waitUntilQuiet();
    EXPECT_EQ(first.takeReports().size(), 1U);
    EXPECT_EQ(second.takeReports().size(), 1U);
  }
}

TEST_F(SimulatedDeviceTest, InRealTimeAnswersComeByThemselves) {
  const auto real = create(SimulatedDevice::Time::real);
  EXPECT_EQ(&real->clock(), &Clock::system());
  Reader reader(*real);
  ask(reader.port());
  reader.answered().wait();
  real->withBase([](SimulatedBase& base) { base.behaviour().answerDelay = Seconds(0.01); });
  ask(reader.port());
  reader.answered().wait();
  real->withBase([](SimulatedBase& base) { base.behaviour().streamWheelStatus = true; });
  for (int i = 0; i < 20; ++i) reader.answered().wait();
  EXPECT_EQ(reader.stop(), HIDReturnCode::aborted);
  EXPECT_EQ(real->violations(), Lines{});
}

TEST_F(SimulatedDeviceTest, LivesAsLongAsAPort) {
  auto other = create(SimulatedDevice::Time::simulated);
  const std::weak_ptr<SimulatedDevice> watched = other;
  auto port = other->open(false).port;
  other.reset();
  EXPECT_FALSE(watched.expired());
  EXPECT_EQ(ask(*port), HIDReturnCode::success);
  port.reset();
  EXPECT_TRUE(watched.expired());
}

TEST(SimulatedDevicePolice, ReportsWhatItsCallersDoWrong) {
  const auto device = SimulatedDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct),
                                              SimulatedDevice::Time::simulated);
  const auto port = device->open(false).port;
  const Bytes good = FanatecCommands::requestTuningSnapshot().wireBytes();
  Bytes buffer(8);

  port->write(0xFF, good);
  EXPECT_EQ(device->violations(), Lines{});
  port->write(0x01, good);
  EXPECT_EQ(device->violations(), (Lines{"a packet that does not begin with its report ID"}));
  port->write(0xFF, ByteView(good).first(63));
  EXPECT_EQ(device->violations(), (Lines{"a packet that does not begin with its report ID",
                                         "63 bytes on report 0xff instead of 64"}));
}

TEST(SimulatedDevicePolice, ReportsUseAfterTheClose) {
  const auto device = SimulatedDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct),
                                              SimulatedDevice::Time::simulated);
  const auto port = device->open(false).port;
  const Bytes good = FanatecCommands::requestTuningSnapshot().wireBytes();
  Bytes buffer(8);
  port->interrupt();
  EXPECT_EQ(port->read(buffer).code, HIDReturnCode::aborted);
  EXPECT_EQ(device->violations(), Lines{});
  // A send on another thread may overlap the close, so it is no violation.
  Thread("sender", [&] { port->write(0xFF, good); }).join();
  EXPECT_EQ(device->violations(), Lines{});
  port->write(0xFF, good);
  EXPECT_EQ(device->violations(), (Lines{"a write after close"}));
  EXPECT_EQ(port->read(buffer).code, HIDReturnCode::aborted);
  EXPECT_EQ(device->violations(), (Lines{"a write after close", "a read after the end"}));
}

TEST_F(SimulatedDeviceTest, PortsTakeTurnsInTheOrderOfAsking) {
  const auto first = device_->open(false).port;
  const auto second = device_->open(false).port;
  auto third = device_->open(false).port;
  const auto fourth = device_->open(false).port;
  EXPECT_TRUE(first->tryWriteLock());
  EXPECT_TRUE(first->tryWriteLock());
  EXPECT_FALSE(second->tryWriteLock());
  EXPECT_FALSE(third->tryWriteLock());
  EXPECT_FALSE(fourth->tryWriteLock());
  first->endWriteLock();
  EXPECT_FALSE(first->tryWriteLock());
  EXPECT_FALSE(third->tryWriteLock());
  EXPECT_TRUE(second->tryWriteLock());
  second->endWriteLock();
  // Closing a port, or giving up, leaves the queue.
  third.reset();
  EXPECT_TRUE(fourth->tryWriteLock());
  first->endWriteLock();
  fourth->endWriteLock();
  EXPECT_TRUE(second->tryWriteLock());
}

TEST_F(SimulatedDeviceTest, TheTurnOfABaseThatLeftIsNobodys) {
  const auto before = device_->open(false).port;
  EXPECT_TRUE(before->tryWriteLock());
  device_->unplug();
  device_->plug();
  const auto after = device_->open(false).port;
  const auto another = device_->open(false).port;
  EXPECT_TRUE(after->tryWriteLock());
  EXPECT_TRUE(before->tryWriteLock());
  EXPECT_FALSE(another->tryWriteLock());
}

TEST_F(SimulatedDeviceTest, PortsNoticeWhoElseHasTheDeviceOrHadIt) {
  const auto first = device_->open(false).port;
  EXPECT_TRUE(first->othersMayHaveWritten());
  first->watchForOthers();
  EXPECT_FALSE(first->othersMayHaveWritten());
  auto second = device_->open(false).port;
  EXPECT_TRUE(first->othersMayHaveWritten());
  EXPECT_TRUE(first->othersMayHaveWritten());
  second->watchForOthers();
  EXPECT_TRUE(second->othersMayHaveWritten());
  second.reset();
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(first->othersMayHaveWritten());
}

TEST_F(SimulatedDeviceTest, PortsRememberWhoCameAndWent) {
  const auto port = device_->open(false).port;
  port->watchForOthers();
  EXPECT_FALSE(port->othersMayHaveWritten());
  device_->open(false);
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(port->othersMayHaveWritten());
}

TEST_F(SimulatedDeviceTest, WithoutTurnsItIsEverybodysTurnAndNobodyKnowsOfOthers) {
  device_->setHasWriteLocks(false);
  const auto first = device_->open(false).port;
  const auto second = device_->open(false).port;
  for (const auto& port : {first.get(), second.get()}) {
    port->watchForOthers();
    EXPECT_TRUE(port->tryWriteLock());
    EXPECT_TRUE(port->othersMayHaveWritten());
  }
}

TEST_F(SimulatedDeviceTest, PortsNoticeWhoWasThereBefore) {
  auto before = std::make_unique<Reader>(*device_);
  Reader reader(*device_);
  reader.port().watchForOthers();
  EXPECT_TRUE(reader.port().othersMayHaveWritten());
  before.reset();
  EXPECT_TRUE(reader.port().othersMayHaveWritten());
}

TEST_F(SimulatedDeviceTest, WhereNobodyTellsOfOpeningsOthersMayAlwaysHaveWritten) {
  Reader reader(*device_);
  reader.port().watchForOthers();
  device_->setTellsOpenings(false);
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(reader.port().othersMayHaveWritten());
  device_->setTellsOpenings(true);
  EXPECT_TRUE(reader.port().othersMayHaveWritten());
}

TEST_F(SimulatedDeviceTest, NotesAMenuWriteInTheTurnOfAnother) {
  const auto device = create(SimulatedDevice::Time::simulated);
  const auto first = device->open(false).port;
  const auto second = device->open(false).port;
  const auto menu = TuningSnapshot::fromReport(menuReport(), {});
  const auto write = FanatecCommands::writeTuning(*menu, TuningParameter::forceFeedback, 70,
                                                  TuningLayout::deviceID, true);
  send(*second, write);
  EXPECT_TRUE(first->tryWriteLock());
  send(*first, write);
  ask(*second);
  EXPECT_EQ(device->violations(), Lines{});
  send(*second, write);
  EXPECT_EQ(device->violations(), (Lines{"a menu write in another's turn"}));
}

}  // namespace
}  // namespace quorvane
