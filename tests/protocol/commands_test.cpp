#include "protocol/commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane::commands_test {
namespace {

using P = TuningParameter;

// The dump of a 64-byte report: the leading bytes, then zeros.
std::string filled(std::string text) {
  while (text.size() < 64U * 3 - 1) text += " 00";
  return text;
}

std::vector<std::string> dumps(const std::vector<HIDReportPacket>& packets) {
  std::vector<std::string> texts;
  texts.reserve(packets.size());
  for (const HIDReportPacket& packet : packets) texts.push_back(packet.hexDump());
  return texts;
}

// A tuning report whose bytes behind the status byte are all different.
Bytes report(std::uint8_t status = 0x82) {
  Bytes bytes(64);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(0x40 + i);
  bytes[0] = 0xFF;
  bytes[1] = 0x03;
  bytes[2] = status;
  return bytes;
}

TuningSnapshot snapshot(const Bytes& bytes) {
  return TuningSnapshot::fromReport(bytes, WallClock::time_point()).value();
}

const std::map<P::Case, std::size_t> offsets{
    {P::slot, 2},           {P::sensitivity, 3},           {P::forceFeedback, 4},
    {P::vibration, 5},      {P::brakeLevelIndicator, 6},   {P::forceFeedbackScaling, 7},
    {P::driftMode, 9},      {P::forceEffect, 10},          {P::springEffect, 11},
    {P::damperEffect, 12},  {P::naturalDamper, 13},        {P::naturalFriction, 14},
    {P::brakeForce, 16},    {P::forceEffectIntensity, 17}, {P::analogPaddles, 19},
    {P::interpolation, 20}, {P::naturalInertia, 21},       {P::fullForce, 22},
};

TEST(TuningLayout, HasAText) {
  EXPECT_EQ(rawValue(TuningLayout::inPlace), "linux");
  EXPECT_EQ(rawValue(TuningLayout::deviceID), "sdk");
  EXPECT_LT(TuningLayout::inPlace, TuningLayout::deviceID);
}

TEST(TuningLayout, ComesFromExactlyItsText) {
  EXPECT_EQ(tuningLayout("linux"), TuningLayout::inPlace);
  EXPECT_EQ(tuningLayout("sdk"), TuningLayout::deviceID);
  for (const std::string_view text : {"", "Linux", "LINUX", "SDK", "inPlace", "deviceID", "sdk "}) {
    EXPECT_EQ(tuningLayout(text), std::nullopt) << text;
  }
}

TEST(FanatecCommands, TuningPacketsHaveTheirExactBytes) {
  const std::vector<std::pair<HIDReportPacket, std::string>> cases{
      {FanatecCommands::requestTuningSnapshot(), "ff 03 02"},
      {FanatecCommands::resetTuningToFactoryDefaults(), "ff 03 04"},
      {FanatecCommands::saveTuning(3), "ff 03 03 03"},
      {FanatecCommands::selectTuningSlot(2, TuningLayout::inPlace), "ff 03 01 02"},
      {FanatecCommands::selectTuningSlot(2, TuningLayout::deviceID), "ff 03 01 00 02"},
      {FanatecCommands::toggleAdvancedMode(), "ff 03 06"},
      {FanatecCommands::enableIdentityReports(true), "ff 08 01 ff"},
      {FanatecCommands::enableIdentityReports(false), "ff 08 01 00"},
      {FanatecCommands::requestIdentityReport(), "ff 08 02"},
  };
  for (const auto& [packet, leading] : cases) {
    SCOPED_TRACE(leading);
    EXPECT_EQ(packet.reportID, 0xFF);
    EXPECT_EQ(packet.payload.size(), 63U);
    EXPECT_EQ(packet.hexDump(), filled(leading));
  }
  EXPECT_EQ(FanatecCommands::tuningReportID, 0xFF);
}

TEST(FanatecCommands, SendsTheLowByteOfASlot) {
  constexpr std::array<std::pair<std::int64_t, std::uint8_t>, 9> cases{{{0, 0x00},
                                                                        {1, 0x01},
                                                                        {5, 0x05},
                                                                        {15, 0x0F},
                                                                        {255, 0xFF},
                                                                        {256, 0x00},
                                                                        {0x1234, 0x34},
                                                                        {-1, 0xFF},
                                                                        {-256, 0x00}}};
  for (const auto& [slot, byte] : cases) {
    SCOPED_TRACE(slot);
    EXPECT_EQ(FanatecCommands::saveTuning(slot).payload[2], byte);
    EXPECT_EQ(FanatecCommands::selectTuningSlot(slot, TuningLayout::inPlace).payload[2], byte);
    EXPECT_EQ(FanatecCommands::selectTuningSlot(slot, TuningLayout::deviceID).payload[2], 0x00);
    EXPECT_EQ(FanatecCommands::selectTuningSlot(slot, TuningLayout::deviceID).payload[3], byte);
  }
}

TEST(FanatecCommands, WritesTheForceFeedbackOfTheExample) {
  Bytes bytes(64);
  const std::array<std::uint8_t, 5> leading{0xFF, 0x03, 0x82, 0x5A, 0x64};
  std::copy(leading.begin(), leading.end(), bytes.begin());
  const TuningSnapshot last = snapshot(bytes);
  const auto write = [&](TuningLayout layout, bool clear) {
    return FanatecCommands::writeTuning(last, P::forceFeedback, 75, layout, clear).hexDump();
  };
  EXPECT_EQ(write(TuningLayout::inPlace, false), filled("ff 03 00 5a 4b"));
  EXPECT_EQ(write(TuningLayout::inPlace, true), filled("ff 03 00 5a 4b"));
  EXPECT_EQ(write(TuningLayout::deviceID, false), filled("ff 03 00 82 5a 4b"));
  EXPECT_EQ(write(TuningLayout::deviceID, true), filled("ff 03 00 02 5a 4b"));
}

TEST(FanatecCommands, AWriteInPlaceChangesTheStatusByteAndItsOwn) {
  ASSERT_EQ(offsets.size(), 18U);
  for (const auto& [parameter, offset] : offsets) {
    SCOPED_TRACE(P(parameter).code());
    for (unsigned raw = 0; raw <= 0xFF; ++raw) {
      const auto byte = static_cast<std::uint8_t>(raw);
      Bytes wire = report();
      wire[2] = 0x00;
      wire[offset] = byte;
      for (const bool clear : {false, true}) {
        const auto packet = FanatecCommands::writeTuning(snapshot(report()), parameter, byte,
                                                         TuningLayout::inPlace, clear);
        ASSERT_EQ(packet.wireBytes(), wire);
      }
    }
  }
}

TEST(FanatecCommands, AWriteBehindTheDeviceIDStandsOneByteLater) {
  for (const auto& [parameter, offset] : offsets) {
    SCOPED_TRACE(P(parameter).code());
    for (unsigned raw = 0; raw <= 0xFF; ++raw) {
      const auto byte = static_cast<std::uint8_t>(raw);
      for (const bool clear : {false, true}) {
        const Bytes last = report();
        Bytes wire(64);
        wire[0] = 0xFF;
        wire[1] = 0x03;
        wire[2] = 0x00;
        for (std::size_t i = 3; i < 64; ++i) wire[i] = last[i - 1];
        if (clear) wire[3] = 0x02;
        wire[offset + 1] = byte;
        const auto packet = FanatecCommands::writeTuning(snapshot(last), parameter, byte,
                                                         TuningLayout::deviceID, clear);
        ASSERT_EQ(packet.wireBytes(), wire);
      }
    }
  }
}

TEST(FanatecCommands, AWriteTreatsEveryStatusByteByItsLayout) {
  for (unsigned value = 0; value <= 0xFF; ++value) {
    const auto status = static_cast<std::uint8_t>(value);
    const TuningSnapshot last = snapshot(report(status));
    const auto wire = [&](TuningLayout layout, bool clear) {
      return FanatecCommands::writeTuning(last, P::forceFeedback, 1, layout, clear).wireBytes();
    };
    EXPECT_EQ(wire(TuningLayout::inPlace, false)[2], 0x00);
    EXPECT_EQ(wire(TuningLayout::inPlace, true)[2], 0x00);
    EXPECT_EQ(wire(TuningLayout::deviceID, false)[2], 0x00);
    EXPECT_EQ(wire(TuningLayout::deviceID, true)[2], 0x00);
    EXPECT_EQ(wire(TuningLayout::deviceID, false)[3], status);
    EXPECT_EQ(wire(TuningLayout::deviceID, true)[3], status % 16);
  }
}

TEST(FanatecCommands, AWriteCarriesWhatBelongsToNoParameterBack) {
  const Bytes last = report();
  const auto inPlace =
      FanatecCommands::writeTuning(snapshot(last), P::slot, 1, TuningLayout::inPlace, false)
          .wireBytes();
  const auto shifted =
      FanatecCommands::writeTuning(snapshot(last), P::slot, 1, TuningLayout::deviceID, false)
          .wireBytes();
  for (const std::size_t offset : {8U, 15U, 18U, 23U, 40U, 62U}) {
    EXPECT_EQ(inPlace[offset], last[offset]) << offset;
    EXPECT_EQ(shifted[offset + 1], last[offset]) << offset;
  }
  EXPECT_EQ(inPlace[63], last[63]);
  EXPECT_EQ(inPlace.size(), 64U);
  EXPECT_EQ(shifted.size(), 64U);
}

TEST(FanatecCommands, SetsTheRotationInThreePackets) {
  const std::vector<std::string> wanted{
      "01 f5 00 00 00 00 00 00",
      "01 f8 09 01 06 01 00 00",
      "01 f8 81 84 03 00 00 00",
  };
  EXPECT_EQ(dumps(FanatecCommands::setRotation(900, 0x01)), wanted);
}

TEST(FanatecCommands, SendsTheLowSixteenBitsOfTheRotation) {
  const std::vector<std::pair<std::int64_t, std::string>> cases{
      {0, "f8 81 00 00 00 00 00"},     {90, "f8 81 5a 00 00 00 00"},
      {255, "f8 81 ff 00 00 00 00"},   {256, "f8 81 00 01 00 00 00"},
      {900, "f8 81 84 03 00 00 00"},   {1080, "f8 81 38 04 00 00 00"},
      {2520, "f8 81 d8 09 00 00 00"},  {65535, "f8 81 ff ff 00 00 00"},
      {65536, "f8 81 00 00 00 00 00"}, {-1, "f8 81 ff ff 00 00 00"},
  };
  for (const auto& [degrees, dump] : cases) {
    const auto packets = FanatecCommands::setRotation(degrees, 0x00);
    ASSERT_EQ(packets.size(), 3U);
    EXPECT_EQ(packets[0].hexDump(), "f5 00 00 00 00 00 00");
    EXPECT_EQ(packets[1].hexDump(), "f8 09 01 06 01 00 00");
    EXPECT_EQ(packets[2].hexDump(), dump);
  }
}

TEST(FanatecCommands, WakesInThreePackets) {
  const std::vector<std::string> wanted{
      "01 f8 09 01 06 ff 01 00",
      "01 f8 09 01 06 ff 00 00",
      "01 f8 09 01 06 ff 04 00",
  };
  EXPECT_EQ(dumps(FanatecCommands::wakeSequence(0x01)), wanted);
}

TEST(FanatecCommands, AcknowledgesInPairs) {
  const std::vector<std::string> wanted{
      "01 f8 09 01 06 ff 02 00",
      "01 f8 09 01 06 00 00 00",
      "01 f8 09 01 06 ff 02 00",
      "01 f8 09 01 06 00 00 00",
  };
  EXPECT_EQ(dumps(FanatecCommands::tuningAckBurst(0x01, 2)), wanted);
  EXPECT_TRUE(FanatecCommands::tuningAckBurst(0x01, 0).empty());
  for (int pairs = 0; pairs <= 50; ++pairs) {
    EXPECT_EQ(FanatecCommands::tuningAckBurst(0x01, pairs).size(),
              2U * static_cast<unsigned>(pairs));
  }
}

TEST(FanatecCommandsDeathTest, ANegativeNumberOfPairsStopsTheProgram) {
  for (const int pairs : {-1, -100}) {
    EXPECT_DEATH(
        FanatecCommands::tuningAckBurst(0x01, pairs),
        "^quorvane: internal fault: an acknowledge burst cannot have a negative length\n$");
  }
}

TEST(FanatecCommands, ShortPacketsGoOnTheReportIDTheyAreGiven) {
  for (unsigned value = 0; value <= 0xFF; ++value) {
    const auto id = static_cast<std::uint8_t>(value);
    for (const auto& packets :
         {FanatecCommands::setRotation(900, id), FanatecCommands::wakeSequence(id),
          FanatecCommands::tuningAckBurst(id, 1)}) {
      for (const HIDReportPacket& packet : packets) {
        EXPECT_EQ(packet.reportID, id);
        EXPECT_EQ(packet.payload.size(), 7U);
        EXPECT_EQ(packet.wireBytes().size(), id == 0 ? 7U : 8U);
      }
    }
  }
}

}  // namespace
}  // namespace quorvane::commands_test
