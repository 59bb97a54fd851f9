#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <vector>

#include "tests/error_text.h"
#include "tests/hid_codes.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

using WheelBaseWrites = SimulatedSessionTest;
using enum TuningParameter::Case;

// Every parameter's offset in a write with the layout inPlace. With the other layout it is one
// more.
struct WriteByte {
  TuningParameter parameter;
  std::size_t inPlace;
};
constexpr std::array<WriteByte, 17> writeBytes{{
    {sensitivity, 3},
    {forceFeedback, 4},
    {vibration, 5},
    {brakeLevelIndicator, 6},
    {forceFeedbackScaling, 7},
    {driftMode, 9},
    {forceEffect, 10},
    {springEffect, 11},
    {damperEffect, 12},
    {naturalDamper, 13},
    {naturalFriction, 14},
    {brakeForce, 16},
    {forceEffectIntensity, 17},
    {analogPaddles, 19},
    {interpolation, 20},
    {naturalInertia, 21},
    {fullForce, 22},
}};

// The write that changes one byte of a menu report, byte for byte.
Bytes expectedWrite(const Bytes& menu, std::size_t inPlaceByte, std::uint8_t raw,
                    TuningLayout layout) {
  Bytes wire = menu;
  if (layout == TuningLayout::inPlace) {
    wire[1] = 0x03;
    wire[2] = 0x00;
    wire[inPlaceByte] = raw;
  } else {
    wire.insert(wire.begin() + 2, 0x00);
    wire.pop_back();
    wire[3] &= 0x0F;
    wire[inPlaceByte + 1] = raw;
  }
  return wire;
}

std::string sent(const Bytes& wire) { return "> " + packetText(wire); }

// The smallest and the largest settable value, one in between, and the automatic angle.
std::set<std::int64_t> valuesOf(TuningParameter parameter, const FanatecProduct& product) {
  const ClosedRange range = parameter.allowedRange(product);
  std::set<std::int64_t> values{range.lower, (range.lower + range.upper) / 2, range.upper};
  if (parameter == sensitivity && product.autoRotation > 0) values.insert(product.autoRotation);
  return values;
}

TEST_F(WheelBaseWrites, EveryParameterOfEveryProductIsWrittenPausedForAndReadBackInBothLayouts) {
  int writes = 0;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (!product.hasTuningMenu()) continue;
    for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
      SimulatedSession session(product.productID);
      session.behave([&](SimulatedBehaviour& b) { b.layout = layout; });
      session.base->writeLayout = layout;
      session.connectAndRead();
      const auto available = TuningParameter::available(product);
      for (const WriteByte& row : writeBytes) {
        if (std::find(available.begin(), available.end(), row.parameter) == available.end()) {
          continue;
        }
        for (const std::int64_t value : valuesOf(row.parameter, product)) {
          SCOPED_TRACE(fmt::format("{} {} = {} {}", product.name, row.parameter.code(), value,
                                   rawValue(layout)));
          const std::uint8_t raw = row.parameter.encode(value, product);
          Bytes menu = session.keptMenu();
          const Bytes wire = expectedWrite(menu, row.inPlace, raw, layout);
          const auto readBack = session.base->set(row.parameter, value, true);
          EXPECT_EQ(session.takeTranscript(), (Lines{sent(wire), "pause 250 ms", menuRequest}));
          menu[row.inPlace] = raw;
          ASSERT_TRUE(readBack);
          EXPECT_EQ(readBack->raw(), menu);
          EXPECT_EQ(readBack->value(row.parameter, product), row.parameter.decode(raw, product));
          ++writes;
        }
      }
    }
  }
  EXPECT_GT(writes, 400);
}

TEST_F(WheelBaseWrites, AVerifiedWriteIsOnePacketOnePauseAndOneRead) {
  connectAndRead();
  const auto readBack = base->set(forceFeedback, 70, true);
  EXPECT_EQ(takeTranscript(),
            (Lines{"> ff 03 00 02 db 46 0a 65 01 00 00 0a 0a 05 19 0a 00 32 64 00 01 0b 05 +41",
                   "pause 250 ms", menuRequest}));
  ASSERT_TRUE(readBack);
  EXPECT_EQ(readBack->value(forceFeedback, base->product()), 70);
  EXPECT_EQ(base->tuning(), readBack);
}

TEST_F(WheelBaseWrites, AnUnverifiedWriteReturnsNothingAndReadsNothing) {
  connectAndRead();
  const Bytes before = keptMenu();
  EXPECT_FALSE(base->set(forceFeedback, 70, false));
  EXPECT_EQ(takeTranscript(), (Lines{sent(expectedWrite(before, 4, 70, TuningLayout::deviceID))}));
  EXPECT_EQ(keptMenu(), before);
}

TEST_F(WheelBaseWrites, ASetIsSwitchedWithThreeBytesAndComparedWithNothing) {
  connect();
  const auto readBack = base->set(slot, 3, true);
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 01 03 +60", "pause 250 ms", menuRequest}));
  ASSERT_TRUE(readBack);
  EXPECT_EQ(readBack->slot(), 3);

  // Selecting a set that does not exist has no effect, and is no error.
  EXPECT_EQ(base->set(slot, 9, true)->slot(), 3);
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 01 09 +60", "pause 250 ms", menuRequest}));
}

TEST_F(WheelBaseWrites, ASwitchOfTheSetNeedsNoSnapshotAndNoRangeAndHasNoBurst) {
  connect();
  base->sendAckBurstAfterWrite = true;
  EXPECT_FALSE(base->set(slot, 4, false));
  EXPECT_FALSE(base->set(slot, 0x1FF, false));
  EXPECT_FALSE(base->set(slot, -2, false));
  EXPECT_EQ(takeTranscript(),
            (Lines{"> ff 03 01 04 +60", "> ff 03 01 ff +60", "> ff 03 01 fe +60"}));
  EXPECT_FALSE(base->tuning());
}

TEST_F(WheelBaseWrites, ASwitchOfTheSetHasTheSameBytesInBothLayouts) {
  connect();
  for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    base->writeLayout = layout;
    base->set(slot, 5, false);
    EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 01 05 +60"}));
  }
}

TEST_F(WheelBaseWrites, NothingIsWrittenBlind) {
  connect();
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 70, true); }),
            "No tuning data received from the base yet; refusing to write blind");
  EXPECT_EQ(errorText([&] { base->packet(forceFeedback, 70); }),
            "No tuning data received from the base yet; refusing to write blind");
  // The missing snapshot is checked before the value.
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 700, true); }),
            "No tuning data received from the base yet; refusing to write blind");
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(WheelBaseWrites, ValuesThatTheBaseCannotHaveAreNotSent) {
  struct Case {
    TuningParameter parameter;
    std::int64_t value;
    std::string error;
  };
  const std::vector<Case> cases{
      {forceFeedback, 101, "FF value 101 is outside 0...100"},
      {forceFeedback, -1, "FF value -1 is outside 0...100"},
      {sensitivity, 80, "SEN value 80 is outside 90...2520"},
      {sensitivity, 2540, "SEN value 2540 is outside 90...2520"},
      {brakeLevelIndicator, 102, "BLI value 102 is outside 0...101"},
      {analogPaddles, 0, "ACP value 0 is outside 1...4"},
      {driftMode, 0, "DRI is not available on CSL DD / GT DD Pro / ClubSport DD"},
  };
  connectAndRead();
  base->sendAckBurstAfterWrite = true;
  const Bytes before = keptMenu();
  for (const Case& refused : cases) {
    EXPECT_EQ(errorText([&] { base->set(refused.parameter, refused.value, true); }), refused.error);
    EXPECT_EQ(errorText([&] { base->packet(refused.parameter, refused.value); }), refused.error);
  }
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(keptMenu(), before);
}

TEST_F(WheelBaseWrites, AnUnknownProductIsSpokenToAsTheLargestMenu) {
  describeAs([](HIDDeviceInfo& info) { info.productID = 0x7777; });
  connectAndRead();
  const Bytes before = keptMenu();
  EXPECT_FALSE(base->set(driftMode, -5, false));
  EXPECT_EQ(takeTranscript(),
            (Lines{sent(expectedWrite(before, 9, 0xFB, TuningLayout::deviceID))}));
}

TEST_F(WheelBaseWrites, TheSetupFlagIsClearedFromTheStatusByteWhenAsked) {
  connect();
  reportMenu({{2, 0xA1}});
  Bytes wire = base->packet(forceFeedback, 70).wireBytes();
  EXPECT_EQ(wire[3], 0x01);
  EXPECT_EQ(wire, expectedWrite(keptMenu(), 4, 70, TuningLayout::deviceID));

  base->clearSetupFlagOnWrite = false;
  wire = base->packet(forceFeedback, 70).wireBytes();
  EXPECT_EQ(wire[3], 0xA1);
}

TEST_F(WheelBaseWrites, InPlaceTheStatusByteIsAlwaysZero) {
  connect();
  reportMenu({{2, 0xA1}});
  base->writeLayout = TuningLayout::inPlace;
  for (const bool clear : {true, false}) {
    base->clearSetupFlagOnWrite = clear;
    const Bytes wire = base->packet(forceFeedback, 70).wireBytes();
    EXPECT_EQ(wire, expectedWrite(keptMenu(), 4, 70, TuningLayout::inPlace));
    EXPECT_EQ(wire[2], 0x00);
  }
}

TEST_F(WheelBaseWrites, BehindADeviceIDTheMenuMovesOneByte) {
  connect();
  reportMenu({{3, 0xDB}, {4, 65}, {62, 0x77}, {63, 0x88}});
  const Bytes menu = keptMenu();
  const Bytes wire = base->packet(forceFeedback, 70).wireBytes();
  ASSERT_EQ(wire.size(), 64U);
  EXPECT_EQ(wire[4], menu[3]);
  EXPECT_EQ(wire[5], 70);
  for (std::size_t i = 6; i < wire.size(); ++i) EXPECT_EQ(wire[i], menu[i - 1]) << i;
  EXPECT_EQ(wire[63], 0x77);  // the report's last byte is cut off
}

TEST_F(WheelBaseWrites, BytesOfNoParameterAreSentBackAsTheyCame) {
  connect();
  Bytes menu = menuReport();
  for (std::size_t i = 3; i < menu.size(); ++i) menu[i] = static_cast<std::uint8_t>(0x40 + i);
  report(menu);
  for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
    base->writeLayout = layout;
    EXPECT_EQ(base->packet(fullForce, 7).wireBytes(), expectedWrite(menu, 22, 7, layout));
  }
}

TEST_F(WheelBaseWrites, PreparingAPacketSendsNothing) {
  connectAndRead();
  const HIDReportPacket packet = base->packet(sensitivity, 900);
  EXPECT_EQ(packet.reportID, 0xFF);
  EXPECT_EQ(packet.payload.size(), 63U);
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(WheelBaseWrites, AWriteStartsFromTheLatestMenu) {
  connectAndRead();
  reportMenu({{10, 3}, {21, 77}});
  const Bytes wire = base->packet(forceFeedback, 70).wireBytes();
  EXPECT_EQ(wire[11], 3);
  EXPECT_EQ(wire[22], 77);
}

TEST_F(WheelBaseWrites, AnIgnoredWriteTellsTheValueThatTheBaseKept) {
  connectAndRead();
  behave([](SimulatedBehaviour& b) { b.ignored = {forceFeedback, sensitivity}; });
  const Bytes before = keptMenu();
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 70, true); }),
            "The base ignored the FF write; it still reports 65");
  EXPECT_EQ(takeTranscript(), (Lines{sent(expectedWrite(before, 4, 70, TuningLayout::deviceID)),
                                     "pause 250 ms", menuRequest}));
  EXPECT_EQ(errorText([&] { base->set(sensitivity, 1080, true); }),
            "The base ignored the SEN write; it still reports 900");
  EXPECT_EQ(keptMenu(), before);
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 70, false); }), "no error");
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 65, true); }), "no error");
}

TEST_F(WheelBaseWrites, AnIgnoredWriteIsToldInEveryParametersOwnUnits) {
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (!product.hasTuningMenu()) continue;
    SimulatedSession session(product.productID);
    session.connectAndRead();
    for (const WriteByte& row : writeBytes) {
      const auto available = TuningParameter::available(product);
      if (std::find(available.begin(), available.end(), row.parameter) == available.end()) continue;
      session.behave([&](SimulatedBehaviour& b) { b.ignored = {row.parameter}; });
      const std::int64_t kept = session.base->tuning()->value(row.parameter, product);
      const ClosedRange range = row.parameter.allowedRange(product);
      const std::int64_t wanted = kept == range.upper ? range.lower : range.upper;
      EXPECT_EQ(errorText([&] { session.base->set(row.parameter, wanted, true); }),
                fmt::format("The base ignored the {} write; it still reports {}",
                            row.parameter.code(), kept))
          << product.name;
    }
  }
}

TEST_F(WheelBaseWrites, ValuesOfTheSameByteCountAsEqual) {
  connectAndRead();
  EXPECT_EQ(base->set(brakeForce, 57, true)->value(brakeForce, base->product()), 50);
  EXPECT_EQ(base->set(vibration, 39, true)->value(vibration, base->product()), 30);
  EXPECT_EQ(base->set(sensitivity, 999, true)->value(sensitivity, base->product()), 990);
}

TEST_F(WheelBaseWrites, TheAutomaticAngleIsWrittenAsZeroDegrees) {
  connectAndRead();
  for (const std::int64_t automatic : {0, 2530}) {
    const auto readBack = base->set(sensitivity, automatic, true);
    EXPECT_EQ(readBack->value(sensitivity, base->product()), 2530);
  }
}

TEST_F(WheelBaseWrites, TheBurstIsEightPacketsWithAPauseBehindEach) {
  connectAndRead();
  base->sendAckBurstAfterWrite = true;
  const Bytes before = keptMenu();
  Lines expected{sent(expectedWrite(before, 4, 70, TuningLayout::deviceID))};
  for (int pair = 0; pair < 4; ++pair) {
    expected.insert(expected.end(), {"> 01 f8 09 01 06 ff 02 +1", "pause 2 ms",
                                     "> 01 f8 09 01 06 +3", "pause 2 ms"});
  }
  base->set(forceFeedback, 70, false);
  EXPECT_EQ(takeTranscript(), expected);

  base->set(forceFeedback, 70, true);
  expected.insert(expected.end(), {"pause 250 ms", menuRequest});
  EXPECT_EQ(takeTranscript(), expected);
}

TEST_F(WheelBaseWrites, TheBurstGoesOnTheCommandReport) {
  connectAndRead();
  base->sendAckBurstAfterWrite = true;
  base->commandReportID.reset();
  base->set(forceFeedback, 70, true);
  EXPECT_EQ(takeTranscript().size(), 3U);  // no burst without a command report
  EXPECT_EQ(device->violations(), Lines{});
}

TEST_F(WheelBaseWrites, TheReadBackMayComeLateButNotTooLate) {
  connectAndRead();
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(1.5); });
  EXPECT_EQ(base->set(forceFeedback, 70, true)->value(forceFeedback, base->product()), 70);

  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(2.5); });
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 80, true); }), menuTimeout);
  EXPECT_EQ(base->tuning()->value(forceFeedback, base->product()), 70);
  device->clock().sleepFor(Seconds(0.5));
  device->waitUntilQuiet();
  EXPECT_EQ(base->tuning()->value(forceFeedback, base->product()), 80);
}

TEST_F(WheelBaseWrites, AMenuThatTheBaseSentBeforeTheWriteMayBeTakenForTheReadBack) {
  connectAndRead();
  behave([](SimulatedBehaviour& b) { b.answerDelay = Seconds(1); });
  EXPECT_EQ(errorText([&] { base->fetchTuning(Seconds(0.5)); }), menuTimeout);
  // One attempt: the late answer to the earlier read still has the old value.
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 70, true); }),
            "The base ignored the FF write; it still reports 65");
  device->clock().sleepFor(Seconds(1));
  device->waitUntilQuiet();
  EXPECT_EQ(base->tuning()->value(forceFeedback, base->product()), 70);
}

TEST_F(WheelBaseWrites, AnyMenuReportInTheMeantimeIsTheReadBack) {
  connectAndRead();
  behave([](SimulatedBehaviour& b) { b.foreignReports = true; });
  EXPECT_EQ(base->set(forceFeedback, 70, true)->value(forceFeedback, base->product()), 70);
}

TEST_F(WheelBaseWrites, EveryReadBackIsAnnounced) {
  connectAndRead();
  std::vector<std::int64_t> announced;
  base->setOnTuningUpdate([&](const TuningSnapshot& snapshot) {
    announced.push_back(snapshot.value(forceFeedback, base->product()));
  });
  base->set(forceFeedback, 70, true);
  base->set(forceFeedback, 71, false);
  base->set(forceFeedback, 72, true);
  device->waitUntilQuiet();
  EXPECT_EQ(announced, (std::vector<std::int64_t>{70, 72}));
}

TEST_F(WheelBaseWrites, AFailedWriteLeavesTheMenuAsLastReported) {
  connectAndRead();
  const Bytes before = keptMenu();
  behave([](SimulatedBehaviour& b) { b.failSendsWith = otherCode; });
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 70, true); }),
            "HID I/O failed: SetReport id 0xFF -> IOReturn 0x0000C005");
  EXPECT_EQ(keptMenu(), before);
  base->disconnect();
  EXPECT_EQ(errorText([&] { base->set(forceFeedback, 70, true); }), "Device is not open");
  EXPECT_EQ(errorText([&] { base->set(slot, 2, true); }), "Device is not open");
  EXPECT_EQ(keptMenu(), before);
}

TEST_F(WheelBaseWrites, OneWriteChangesNothingElse) {
  connectAndRead();
  const Bytes before = keptMenu();
  Bytes after = base->set(damperEffect, 120, true)->raw();
  EXPECT_EQ(after[12], 12);
  after[12] = before[12];
  EXPECT_EQ(after, before);
}

}  // namespace
}  // namespace quorvane
