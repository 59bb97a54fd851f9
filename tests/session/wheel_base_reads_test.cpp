#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/error_text.h"
#include "tests/hid_codes.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

using WheelBaseReads = SimulatedSessionTest;
using WheelBaseReadsInRealTime = RealTimeSessionTest;

constexpr std::size_t sensitivityByte = 3;
// A wheel-status report with this wheel ID and firmware version.
Bytes wheelStatus(std::uint16_t wheel, std::uint16_t firmware, std::size_t length = 34,
                  std::uint8_t reportID = 0x01) {
  Bytes report(34);
  report[0] = reportID;
  report[30] = static_cast<std::uint8_t>(wheel);
  report[31] = static_cast<std::uint8_t>(wheel >> 8U);
  report[32] = static_cast<std::uint8_t>(firmware);
  report[33] = static_cast<std::uint8_t>(firmware >> 8U);
  report.resize(length);
  return report;
}

TEST_F(WheelBaseReads, AFreshSessionHasAskedNothing) {
  EXPECT_EQ(base->info().id, HIDEnumerator::info(device).id);
  EXPECT_EQ(base->product(), FanatecProduct::lookup(defaultSimulatedProduct));
  EXPECT_EQ(base->commandReportID, 1);
  EXPECT_EQ(base->writeLayout, TuningLayout::deviceID);
  EXPECT_TRUE(base->clearSetupFlagOnWrite);
  EXPECT_FALSE(base->sendAckBurstAfterWrite);
  EXPECT_FALSE(base->tuning());
  EXPECT_FALSE(base->identity());
  EXPECT_FALSE(base->wheelID());
  EXPECT_FALSE(base->firmwareVersion());
  EXPECT_FALSE(base->connection().isOpen());
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(WheelBaseReads, AnUnknownProductIsNoProduct) {
  describeAs([](HIDDeviceInfo& info) { info.productID = 0x7777; });
  EXPECT_FALSE(base->product());
}

TEST_F(WheelBaseReads, ConnectingOnlyOpensShared) {
  base->connect();
  EXPECT_TRUE(base->connection().isOpen());
  EXPECT_EQ(takeTranscript(), (Lines{"open"}));
  EXPECT_FALSE(base->tuning());

  const auto second = WheelBase::create(base->info(), device->clock());
  second->connect();
  EXPECT_EQ(device->openPorts(), 2U);
}

TEST_F(WheelBaseReads, AFailedConnectSaysWhyAndMayBeRepeated) {
  device->failOpenWith(HIDReturnCode::notPermitted);
  EXPECT_EQ(errorText([&] { base->connect(); }),
            "HID I/O failed: not permitted: check System Settings > Privacy & Security > Input "
            "Monitoring");
  EXPECT_FALSE(base->connection().isOpen());
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), "Device is not open");
  EXPECT_EQ(takeTranscript(), Lines{});

  device->failOpenWith(HIDReturnCode::success);
  connect();
  EXPECT_EQ(base->fetchTuning(WheelBase::readTimeout).raw(), menuReport());
}

TEST_F(WheelBaseReads, ABaseThatIsGoneCannotBeConnected) {
  device->unplug();
  EXPECT_EQ(errorText([&] { base->connect(); }), "HID I/O failed: device not found");
}

TEST_F(WheelBaseReads, AnotherProgramsExclusiveOpeningIsReported) {
  const auto other = device->open(true);
  EXPECT_EQ(errorText([&] { base->connect(); }),
            "HID I/O failed: exclusive access: another app has seized the device");
}

TEST_F(WheelBaseReads, TheMenuIsReadWithOneRequest) {
  connect();
  const TuningSnapshot snapshot = base->fetchTuning(WheelBase::readTimeout);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest}));
  EXPECT_EQ(snapshot.raw(), menuReport());
  EXPECT_EQ(base->tuning(), snapshot);
  EXPECT_FALSE(base->identity());
}

TEST_F(WheelBaseReads, TheIdentityIsReadWithTwoRequestsAndNoPause) {
  connect();
  const IdentityReport identity = base->fetchIdentity(WheelBase::readTimeout);
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 08 01 ff +60", "> ff 08 02 +61"}));
  EXPECT_EQ(identity.baseName(), "CSL DD Wheel Base");
  EXPECT_EQ(base->identity(), identity);
  EXPECT_FALSE(base->tuning());
}

TEST_F(WheelBaseReads, NothingIsReadThroughAClosedSession) {
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), "Device is not open");
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), "Device is not open");
  connect();
  base->disconnect();
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), "Device is not open");
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), "Device is not open");
}

TEST_F(WheelBaseReads, WhatWasReadSurvivesTheDisconnect) {
  connect();
  const TuningSnapshot tuning = base->fetchTuning(WheelBase::readTimeout);
  const IdentityReport identity = base->fetchIdentity(WheelBase::readTimeout);
  report(wheelStatus(0x1C, 1234));
  base->disconnect();
  EXPECT_EQ(base->tuning(), tuning);
  EXPECT_EQ(base->identity(), identity);
  EXPECT_EQ(base->wheelID(), 0x1C);
  EXPECT_EQ(base->firmwareVersion(), 1234);
}

TEST_F(WheelBaseReads, AReportThatNobodyWaitsForStillReplacesTheMenuAndIsAnnounced) {
  connectAndRead();
  std::vector<Bytes> announced;
  base->setOnTuningUpdate(
      [&](const TuningSnapshot& snapshot) { announced.push_back(snapshot.raw()); });
  device->turn(TuningParameter::forceFeedback, 42);
  device->waitUntilQuiet();
  ASSERT_TRUE(base->tuning());
  EXPECT_EQ(base->tuning()->value(TuningParameter::forceFeedback, base->product()), 42);
  EXPECT_EQ(announced, (std::vector<Bytes>{menuReport()}));
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(WheelBaseReads, EveryMenuReportIsAnnouncedOnceAlsoWhenNothingChanged) {
  connect();
  std::vector<Bytes> announced;
  base->setOnTuningUpdate(
      [&](const TuningSnapshot& snapshot) { announced.push_back(snapshot.raw()); });
  base->fetchTuning(WheelBase::readTimeout);
  report(menuReport());
  base->fetchTuning(WheelBase::readTimeout);
  device->waitUntilQuiet();
  EXPECT_EQ(announced, std::vector<Bytes>(3, menuReport()));

  base->setOnTuningUpdate({});
  report(menuReport());
  EXPECT_EQ(announced.size(), 3U);
}

TEST_F(WheelBaseReads, TheAnnouncedMenuIsAlreadyKept) {
  connect();
  bool same = false;
  base->setOnTuningUpdate(
      [&](const TuningSnapshot& snapshot) { same = base->tuning() == snapshot; });
  report(menuReport());
  EXPECT_TRUE(same);
}

TEST_F(WheelBaseReads, AnIdentityReportIsKeptAndNotAnnounced) {
  connect();
  int announced = 0;
  base->setOnTuningUpdate([&](const TuningSnapshot&) { ++announced; });
  base->setOnStatusUpdate([&](WheelBase&) { ++announced; });
  base->fetchIdentity(WheelBase::readTimeout);
  device->waitUntilQuiet();
  EXPECT_EQ(announced, 0);
  ASSERT_TRUE(base->identity());
  EXPECT_FALSE(base->tuning());
}

TEST_F(WheelBaseReads, NoAnswerIsATimeoutThatSaysWhatWasWaitedFor) {
  connect();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), menuTimeout);
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), identityTimeout);
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, "> ff 08 01 ff +60", "> ff 08 02 +61"}));
}

TEST_F(WheelBaseReads, AReadWaitsAsLongAsItWasToldTo) {
  connect();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  for (const double timeout : {0.0, 0.5, 2.0, 7.25}) {
    const auto start = device->clock().now();
    EXPECT_EQ(errorText([&] { base->fetchTuning(Seconds(timeout)); }), menuTimeout);
    EXPECT_EQ(Seconds(device->clock().now() - start).count(), timeout);
    EXPECT_EQ(errorText([&] { base->fetchIdentity(Seconds(timeout)); }), identityTimeout);
    EXPECT_EQ(Seconds(device->clock().now() - start).count(), 2 * timeout);
  }
}

TEST_F(WheelBaseReads, ABaseOutsidePCModeAnswersItsIdentityOnly) {
  connect();
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), "no error");
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), menuTimeout);
}

TEST_F(WheelBaseReads, AReportOfTheOtherKindDoesNotEndAWait) {
  connect();
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(1); });
  EXPECT_EQ(errorText([&] { base->fetchIdentity(Seconds(0.5)); }), identityTimeout);
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  // The identity report of the earlier read arrives now.
  EXPECT_EQ(errorText([&] { base->fetchTuning(Seconds(1)); }), menuTimeout);
  EXPECT_TRUE(base->identity());

  behave([](SimulatedBehaviour& b) { b.silent = false; });
  EXPECT_EQ(errorText([&] { base->fetchTuning(Seconds(0.5)); }), menuTimeout);
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  EXPECT_EQ(errorText([&] { base->fetchIdentity(Seconds(1)); }), identityTimeout);
  EXPECT_TRUE(base->tuning());
}

TEST_F(WheelBaseReads, ALateAnswerWithinTheTimeoutIsInTime) {
  connect();
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(1.5); });
  const auto start = device->clock().now();
  EXPECT_EQ(base->fetchTuning(WheelBase::readTimeout).raw(), menuReport());
  EXPECT_EQ(Seconds(device->clock().now() - start).count(), 1.5);
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), "no error");
  EXPECT_EQ(Seconds(device->clock().now() - start).count(), 3.0);
}

TEST_F(WheelBaseReads, AnAnswerAfterTheTimeoutStillReplacesTheMenu) {
  connectAndRead();
  int announced = 0;
  base->setOnTuningUpdate([&](const TuningSnapshot&) { ++announced; });
  device->withBase([](SimulatedBase& simulated) {
    simulated.behaviour().answerDelay = Seconds(2.5);
    simulated.menu().put(TuningParameter::forceFeedback, 42);
  });
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), menuTimeout);
  EXPECT_NE(keptMenu(), menuReport());
  EXPECT_EQ(announced, 0);

  device->clock().sleepFor(Seconds(0.5));
  device->waitUntilQuiet();
  EXPECT_EQ(keptMenu(), menuReport());
  EXPECT_EQ(announced, 1);
}

TEST_F(WheelBaseReads, AnIdentityAfterTheTimeoutIsStillKept) {
  connect();
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(2.5); });
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), identityTimeout);
  EXPECT_FALSE(base->identity());
  device->clock().sleepFor(Seconds(0.5));
  device->waitUntilQuiet();
  EXPECT_TRUE(base->identity());
}

TEST_F(WheelBaseReads, AStaleAnswerEndsTheNextReadAndIsReplacedByItsOwn) {
  connect();
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(2.5); });
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), menuTimeout);
  const Bytes stale = menuReport();
  device->withBase(
      [](SimulatedBase& simulated) { simulated.menu().put(TuningParameter::forceFeedback, 42); });
  EXPECT_EQ(base->fetchTuning(WheelBase::readTimeout).raw(), stale);
  device->clock().sleepFor(Seconds(2.5));
  device->waitUntilQuiet();
  EXPECT_EQ(keptMenu(), menuReport());
  EXPECT_NE(keptMenu(), stale);
}

TEST_F(WheelBaseReads, ForeignReportsDoNotDisturbARead) {
  connect();
  behave([](SimulatedBehaviour& b) {
    b.foreignReports = true;
    b.streamWheelStatus = true;
  });
  EXPECT_EQ(base->fetchTuning(WheelBase::readTimeout).raw(), menuReport());
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), "no error");
}

TEST_F(WheelBaseReads, ReportsOfOtherKindsAndLengthsAreIgnored) {
  connectAndRead();
  const Bytes menu = keptMenu();
  int announced = 0;
  base->setOnTuningUpdate([&](const TuningSnapshot&) { ++announced; });
  base->setOnStatusUpdate([&](WheelBase&) { ++announced; });
  Bytes shortMenu = menu;
  shortMenu.pop_back();
  Bytes longMenu = menu;
  longMenu.push_back(0);
  Bytes otherGroup = menu;
  otherGroup[1] = 0x04;
  Bytes otherReport = menu;
  otherReport[0] = 0xFE;
  Bytes shortIdentity(63);
  shortIdentity[0] = 0xFF;
  shortIdentity[1] = 0x08;
  for (const Bytes& foreign : {Bytes{}, Bytes{0xFF}, Bytes{0x01}, Bytes{0xFF, 0x03}, shortMenu,
                               longMenu, otherGroup, otherReport, shortIdentity, Bytes(64)}) {
    report(foreign);
  }
  EXPECT_EQ(keptMenu(), menu);
  EXPECT_FALSE(base->identity());
  EXPECT_FALSE(base->wheelID());
  EXPECT_EQ(announced, 0);
}

TEST_F(WheelBaseReads, WheelStatusIsAnnouncedWhenItChanges) {
  struct Step {
    Bytes report;
    int announced;  // so far
    std::optional<std::uint16_t> wheel;
    std::optional<std::uint16_t> firmware;
  };
  const std::vector<Step> steps{
      {wheelStatus(0x00FF, 1), 0, {}, {}},               // no wheel
      {wheelStatus(0x001C, 1, 33), 0, {}, {}},           // too short
      {wheelStatus(0x001C, 1, 35), 0, {}, {}},           // too long
      {wheelStatus(0x001C, 1, 34, 0x02), 0, {}, {}},     // another report
      {wheelStatus(0x001C, 1), 1, 0x001C, 1},            // the first
      {wheelStatus(0x001C, 1), 1, 0x001C, 1},            // the same again
      {wheelStatus(0x001C, 0x0102), 2, 0x001C, 0x0102},  // another firmware version
      {wheelStatus(0x001C, 0x0102), 2, 0x001C, 0x0102},  //
      {wheelStatus(0x121C, 0x0102), 3, 0x121C, 0x0102},  // another wheel
      {wheelStatus(0x0001, 7), 4, 0x0001, 7},            // both at once
      {wheelStatus(0x00FF, 8), 4, 0x0001, 7},            // no wheel changes nothing
      {wheelStatus(0x34FF, 8), 4, 0x0001, 7},            // no wheel, by the low byte
      {wheelStatus(0x0001, 7), 4, 0x0001, 7},            // the same wheel again is no change
      {wheelStatus(0x0002, 9, 33), 4, 0x0001, 7},        // too short
      {wheelStatus(0x0002, 9, 35), 4, 0x0001, 7},        // too long
      {wheelStatus(0xFF01, 0xFFFF), 5, 0xFF01, 0xFFFF},  // the high byte is ignored for that
      {wheelStatus(0x0000, 0x0000), 6, 0x0000, 0x0000},  // zeros are valid
  };
  connect();
  int announced = 0;
  base->setOnStatusUpdate([&](WheelBase& session) {
    EXPECT_EQ(&session, base.get());
    ++announced;
  });
  for (std::size_t i = 0; i < steps.size(); ++i) {
    report(steps[i].report);
    EXPECT_EQ(announced, steps[i].announced) << "step " << i;
    EXPECT_EQ(base->wheelID(), steps[i].wheel) << "step " << i;
    EXPECT_EQ(base->firmwareVersion(), steps[i].firmware) << "step " << i;
  }
  EXPECT_FALSE(base->tuning());
}

TEST_F(WheelBaseReads, TheAnnouncedWheelIsAlreadyKept) {
  connect();
  std::vector<std::pair<int, int>> seen;
  base->setOnStatusUpdate([&](WheelBase& session) {
    seen.emplace_back(session.wheelID().value_or(0), session.firmwareVersion().value_or(0));
  });
  report(wheelStatus(3, 4));
  base->setOnStatusUpdate({});
  report(wheelStatus(5, 6));
  EXPECT_EQ(seen, (std::vector<std::pair<int, int>>{{3, 4}}));
  EXPECT_EQ(base->wheelID(), 5);
}

TEST_F(WheelBaseReads, AStreamOfTheSameStatusIsAnnouncedOnce) {
  connect();
  int announced = 0;
  base->setOnStatusUpdate([&](WheelBase&) { ++announced; });
  behave([](SimulatedBehaviour& b) { b.streamWheelStatus = true; });
  for (int i = 0; i < 20; ++i) {
    device->clock().sleepFor(Seconds(0.01));
    device->waitUntilQuiet();
  }
  EXPECT_EQ(announced, 1);
}

TEST_F(WheelBaseReads, AFailedSendIsTheReadsErrorAndReturnsAtOnce) {
  connect();
  behave([](SimulatedBehaviour& b) { b.failSendsWith = otherCode; });
  const auto start = device->clock().now();
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }),
            "HID I/O failed: SetReport id 0xFF -> IOReturn 0x0000C005");
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }),
            "HID I/O failed: SetReport id 0xFF -> IOReturn 0x0000C005");
  EXPECT_EQ(device->clock().now(), start);
  EXPECT_EQ(takeTranscript(),
            (Lines{"> ff 03 02 +61 failed 0x0000C005", "> ff 08 01 ff +60 failed 0x0000C005"}));
}

TEST_F(WheelBaseReads, AReadThatCouldNotAskLeavesNothingThatDisturbsTheNext) {
  connect();
  behave([](SimulatedBehaviour& b) { b.failSendsWith = otherCode; });
  for (int i = 0; i < 3; ++i) {
    EXPECT_NE(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), "no error");
    EXPECT_NE(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), "no error");
  }
  report(menuReport());
  behave([](SimulatedBehaviour& b) { b.failSendsWith = HIDReturnCode::success; });
  EXPECT_EQ(base->fetchTuning(WheelBase::readTimeout).raw(), menuReport());
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), "no error");
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), menuTimeout);
  EXPECT_EQ(errorText([&] { base->fetchIdentity(WheelBase::readTimeout); }), identityTimeout);
}

TEST_F(WheelBaseReads, AReportFromBeforeTheRequestDoesNotAnswerIt) {
  connectAndRead();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  report(menuReport());
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), menuTimeout);
}

TEST_F(WheelBaseReads, ABaseThatLeavesWhileItIsAskedIsATimeout) {
  connect();
  behave([](SimulatedBehaviour& b) { b.unplugAfter = 1; });
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }), menuTimeout);
  EXPECT_EQ(errorText([&] { base->fetchTuning(WheelBase::readTimeout); }),
            "HID I/O failed: SetReport id 0xFF -> device not found");
  EXPECT_TRUE(base->connection().isOpen());
}

TEST_F(WheelBaseReads, SessionsWithOneBaseSeeEachOthersReports) {
  connect();
  const auto other = WheelBase::create(base->info(), device->clock());
  other->connect();
  base->fetchTuning(WheelBase::readTimeout);
  device->waitUntilQuiet();
  ASSERT_TRUE(other->tuning());
  EXPECT_EQ(other->tuning()->raw(), keptMenu());
  other->disconnect();
}

TEST_F(WheelBaseReadsInRealTime, OneReportReleasesEveryReader) {
  connect();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  std::vector<Bytes> read(2);
  {
    const Thread first("first", [&] { read[0] = base->fetchTuning(never).raw(); });
    const Thread second("second", [&] { read[1] = base->fetchTuning(never).raw(); });
    device->transcript().waitForLines(2);
    device->turn(TuningParameter::forceFeedback, 42);
  }
  EXPECT_EQ(read, std::vector<Bytes>(2, menuReport()));
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, menuRequest}));
}

TEST_F(WheelBaseReadsInRealTime, OneIdentityReleasesEveryReader) {
  connect();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  Bytes identity;
  device->withBase([&](SimulatedBase& simulated) { identity = simulated.identityReport(); });
  std::vector<Bytes> read(2);
  {
    const Thread first("first", [&] { read[0] = base->fetchIdentity(never).raw(); });
    const Thread second("second", [&] { read[1] = base->fetchIdentity(never).raw(); });
    device->transcript().waitForLines(4);
    device->sendReport(identity);
  }
  EXPECT_EQ(read, std::vector<Bytes>(2, identity));
}

TEST_F(WheelBaseReadsInRealTime, AReaderWhoseTimePassesLeavesTheOthersWaiting) {
  connect();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  std::vector<Bytes> read(2);
  {
    const Thread before("before", [&] { read[0] = base->fetchTuning(never).raw(); });
    device->transcript().waitForLines(1);
    EXPECT_EQ(errorText([&] { base->fetchTuning(Seconds(0)); }), menuTimeout);
    const Thread after("after", [&] { read[1] = base->fetchTuning(never).raw(); });
    device->transcript().waitForLines(3);
    EXPECT_EQ(errorText([&] { base->fetchTuning(Seconds(-1)); }), menuTimeout);
    device->turn(TuningParameter::sensitivity, 1080);
  }
  EXPECT_EQ(read, std::vector<Bytes>(2, menuReport()));
  EXPECT_EQ(read[0][sensitivityByte], 0xED);
}

TEST_F(WheelBaseReadsInRealTime, AReaderIsReleasedBeforeTheMenuIsAnnounced) {
  connect();
  Semaphore released;
  base->setOnTuningUpdate([&](const TuningSnapshot&) { released.wait(); });
  EXPECT_EQ(base->fetchTuning(never).raw(), menuReport());
  released.signal();
  device->waitUntilQuiet();
}

}  // namespace
}  // namespace quorvane
