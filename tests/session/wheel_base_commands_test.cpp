#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "protocol/error.h"
#include "tests/error_text.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

using WheelBaseCommands = SimulatedSessionTest;

TEST_F(WheelBaseCommands, ASetIsSelectedPausedForAndRead) {
  connectAndRead();
  const TuningSnapshot snapshot = base->selectSlot(4, TuningLayout::inPlace);
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 01 04 +60", "pause 150 ms", menuRequest}));
  EXPECT_EQ(snapshot.slot(), 4);
  EXPECT_EQ(base->tuning(), snapshot);

  EXPECT_EQ(base->selectSlot(1, TuningLayout::deviceID).slot(), 1);
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 01 00 01 +59", "pause 150 ms", menuRequest}));
}

TEST_F(WheelBaseCommands, SelectingASetReturnsTheMenuReadAfterTheSwitch) {
  connectAndRead();
  const TuningSnapshot before = *base->tuning();
  device->withBase([](SimulatedBase& simulated) {
    simulated.menu().select(5);
    simulated.menu().put(TuningParameter::forceFeedback, 11);
    simulated.menu().select(2);
  });
  const TuningSnapshot after = base->selectSlot(5, TuningLayout::inPlace);
  EXPECT_NE(after, before);
  EXPECT_EQ(after.slot(), 5);
  EXPECT_EQ(after.value(TuningParameter::forceFeedback, base->product()), 11);
}

TEST_F(WheelBaseCommands, SelectingUsesTheLayoutGivenWhateverWritesUse) {
  connect();
  for (const TuningLayout writes : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    base->writeLayout = writes;
    base->selectSlot(3, TuningLayout::inPlace);
    EXPECT_EQ(takeTranscript().front(), "> ff 03 01 03 +60");
  }
}

TEST_F(WheelBaseCommands, SelectingChecksNoRange) {
  connect();
  EXPECT_EQ(base->selectSlot(9, TuningLayout::inPlace).slot(), 2);
  EXPECT_EQ(base->selectSlot(0x104, TuningLayout::inPlace).slot(), 4);
}

TEST_F(WheelBaseCommands, SelectingWithoutAnAnswerIsATimeout) {
  connectAndRead();
  const TuningSnapshot before = *base->tuning();
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  EXPECT_EQ(errorText([&] { base->selectSlot(4, TuningLayout::inPlace); }), menuTimeout);
  EXPECT_EQ(base->tuning(), before);
}

TEST_F(WheelBaseCommands, TheModeIsToggledWithOnePacketThatNobodyWaitsFor) {
  connectAndRead();
  const TuningSnapshot before = *base->tuning();
  ASSERT_FALSE(before.isAdvancedMode());
  const auto start = device->clock().now();
  base->toggleAdvancedMode();
  device->waitUntilQuiet();
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 06 +61"}));
  EXPECT_EQ(device->clock().now(), start);
  EXPECT_EQ(base->tuning(), before);

  EXPECT_TRUE(base->fetchTuning(WheelBase::readTimeout).isAdvancedMode());
  EXPECT_TRUE(base->tuning()->isAdvancedMode());
  base->toggleAdvancedMode();
  EXPECT_FALSE(base->fetchTuning(WheelBase::readTimeout).isAdvancedMode());
}

TEST_F(WheelBaseCommands, TheModeIsSwitchedPausedForAndRead) {
  connect();
  EXPECT_TRUE(base->switchMenuMode().isAdvancedMode());
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 06 +61", "pause 400 ms", menuRequest}));
  EXPECT_FALSE(base->switchMenuMode().isAdvancedMode());
}

TEST_F(WheelBaseCommands, AFactoryResetIsSentPausedForAndRead) {
  connect();
  base->switchMenuMode();
  base->set(TuningParameter::forceFeedback, 11, true);
  takeTranscript();
  const TuningSnapshot snapshot = base->factoryReset();
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 04 +61", "pause 400 ms", menuRequest}));
  EXPECT_EQ(snapshot.slot(), 1);
  EXPECT_FALSE(snapshot.isAdvancedMode());
  EXPECT_EQ(snapshot.value(TuningParameter::forceFeedback, base->product()), 100);
  EXPECT_EQ(base->tuning(), snapshot);
}

TEST_F(WheelBaseCommands, AFactoryResetWithoutAnAnswerIsATimeout) {
  connect();
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  EXPECT_EQ(errorText([&] { base->factoryReset(); }), menuTimeout);
  EXPECT_EQ(errorText([&] { base->switchMenuMode(); }), menuTimeout);
}

TEST_F(WheelBaseCommands, TheRotationIsSetWithThreePacketsAndNoPause) {
  struct Case {
    std::int64_t degrees;
    std::string last;
  };
  const std::vector<Case> cases{
      {90, "> 01 f8 81 5a +4"},
      {900, "> 01 f8 81 84 03 +3"},
      {1024, "> 01 f8 81 00 04 +3"},
      {2520, "> 01 f8 81 d8 09 +3"},
  };
  connect();
  for (const Case& rotation : cases) {
    base->setRotation(rotation.degrees);
    EXPECT_EQ(takeTranscript(), (Lines{"> 01 f5 +6", "> 01 f8 09 01 06 01 +2", rotation.last}));
  }
  EXPECT_FALSE(base->tuning());
}

TEST_F(WheelBaseCommands, EveryKnownProductTurnsFrom90DegreesToItsMaximum) {
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.kind != ProductKind::wheelBase) continue;
    SimulatedSession session;
    session.describeAs([&](HIDDeviceInfo& info) { info.productID = product.productID; });
    session.connect();
    for (const std::int64_t degrees : {std::int64_t{90}, product.maxRotation}) {
      EXPECT_EQ(errorText([&] { session.base->setRotation(degrees); }), "no error");
      EXPECT_EQ(session.takeTranscript().size(), 3U);
    }
    for (const std::int64_t degrees :
         {std::int64_t{89}, std::int64_t{0}, std::int64_t{-90}, product.maxRotation + 1}) {
      EXPECT_EQ(errorText([&] { session.base->setRotation(degrees); }),
                fmt::format("SEN value {} is outside 90...{}", degrees, product.maxRotation));
      EXPECT_EQ(session.takeTranscript(), Lines{});
    }
  }
}

TEST_F(WheelBaseCommands, ARefusedRotationIsAnErrorOfTheSensitivity) {
  connect();
  try {
    base->setRotation(89);
    FAIL() << "89 degrees were accepted";
  } catch (const FanatecError& error) {
    EXPECT_EQ(error, FanatecError::outOfRange(TuningParameter::sensitivity, 89, {90, 2520}));
  }
}

TEST_F(WheelBaseCommands, AnUnknownProductTurnsUpTo2520Degrees) {
  describeAs([](HIDDeviceInfo& info) { info.productID = 0x7777; });
  connect();
  base->setRotation(90);
  base->setRotation(2520);
  EXPECT_EQ(takeTranscript().size(), 6U);
  EXPECT_EQ(errorText([&] { base->setRotation(2521); }), "SEN value 2521 is outside 90...2520");
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(WheelBaseCommands, WithoutACommandReportNoRotationIsSent) {
  describeAs([](HIDDeviceInfo& info) { info.reports.clear(); });
  EXPECT_FALSE(base->commandReportID);
  connect();
  for (const std::int64_t degrees : {900, 89, 9999}) {
    EXPECT_EQ(errorText([&] { base->setRotation(degrees); }),
              "Could not find the base's 7-byte output report; pass --report-id");
  }
  EXPECT_EQ(takeTranscript(), Lines{});

  base->commandReportID = 1;
  base->setRotation(900);
  EXPECT_EQ(takeTranscript().size(), 3U);
}

TEST_F(WheelBaseCommands, AKnownProductWithoutSteeringHasNoRotation) {
  describeAs([](HIDDeviceInfo& info) { info.productID = 0x6204; });
  connect();
  for (const std::int64_t degrees : {90, 900, -1}) {
    try {
      base->setRotation(degrees);
      FAIL() << degrees << " degrees were accepted";
    } catch (const FanatecError& error) {
      EXPECT_EQ(error,
                FanatecError::notAvailable(TuningParameter::sensitivity, "CSL Elite Pedals"));
    }
  }
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(WheelBaseCommands, ARawPacketIsSentAsItIs) {
  connect();
  base->sendRaw({0x01, {0xF8, 0x81, 0x84, 0x03, 0, 0, 0}});
  base->sendRaw(FanatecCommands::requestTuningSnapshot());
  device->waitUntilQuiet();
  EXPECT_EQ(takeTranscript(), (Lines{"> 01 f8 81 84 03 +3", menuRequest}));
  EXPECT_EQ(keptMenu(), menuReport());
}

TEST_F(WheelBaseCommands, NothingIsSentThroughAClosedSession) {
  const std::vector<std::function<void()>> operations{
      [&] { base->selectSlot(1, TuningLayout::inPlace); },
      [&] { base->toggleAdvancedMode(); },
      [&] { base->switchMenuMode(); },
      [&] { base->factoryReset(); },
      [&] { base->setRotation(900); },
      [&] { base->sendRaw(FanatecCommands::requestTuningSnapshot()); },
  };
  for (const auto& operation : operations) EXPECT_EQ(errorText(operation), "Device is not open");
  EXPECT_EQ(takeTranscript(), Lines{});
}

}  // namespace
}  // namespace quorvane
