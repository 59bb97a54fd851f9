#include "protocol/tuning_snapshot.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "protocol/product.h"

namespace quorvane::tuning_snapshot_test {
namespace {

using P = TuningParameter;

constexpr WallClock::time_point received{std::chrono::seconds(1772357400)};
const std::optional<FanatecProduct> noProduct;

// A tuning report whose other bytes are all different.
Bytes report() {
  Bytes bytes(64);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(0x90 + i);
  bytes[0] = 0xFF;
  bytes[1] = 0x03;
  return bytes;
}

TuningSnapshot snapshot(const Bytes& bytes) {
  return TuningSnapshot::fromReport(bytes, received).value();
}

TuningSnapshot withByte(std::size_t offset, unsigned value) {
  Bytes bytes = report();
  bytes[offset] = static_cast<std::uint8_t>(value);
  return snapshot(bytes);
}

TEST(TuningSnapshot, HasItsConstants) {
  EXPECT_EQ(TuningSnapshot::reportID, 0xFF);
  EXPECT_EQ(TuningSnapshot::subID, 0x03);
  EXPECT_EQ(TuningSnapshot::length, 64U);
}

TEST(TuningSnapshot, IsMadeOfExactlySixtyFourBytes) {
  for (std::size_t length = 0; length <= 130; ++length) {
    Bytes bytes = report();
    bytes.resize(length);
    EXPECT_EQ(TuningSnapshot::fromReport(bytes, received).has_value(), length == 64) << length;
  }
}

TEST(TuningSnapshot, BeginsWithItsReportIDAndSubID) {
  Bytes bytes = report();
  for (unsigned id = 0; id <= 0xFF; ++id) {
    for (unsigned sub = 0; sub <= 0xFF; ++sub) {
      bytes[0] = static_cast<std::uint8_t>(id);
      bytes[1] = static_cast<std::uint8_t>(sub);
      ASSERT_EQ(TuningSnapshot::fromReport(bytes, received).has_value(), id == 0xFF && sub == 0x03)
          << id << " " << sub;
    }
  }
}

TEST(TuningSnapshot, KeepsTheBytesAndTheTime) {
  const TuningSnapshot kept = snapshot(report());
  EXPECT_EQ(kept.raw(), report());
  EXPECT_EQ(kept.receivedAt(), received);
}

TEST(TuningSnapshot, ReadsSlotAndModeFromTheStatusByte) {
  for (unsigned status = 0; status <= 0xFF; ++status) {
    const TuningSnapshot read = withByte(2, status);
    EXPECT_EQ(read.slot(), static_cast<int>(status % 16)) << status;
    EXPECT_EQ(read.isAdvancedMode(), status < 128) << status;
  }
}

TEST(TuningSnapshot, NamesTheMenuMode) {
  for (unsigned status = 0; status <= 0xFF; ++status) {
    EXPECT_EQ(withByte(2, status).modeName(), status < 128 ? "advanced" : "standard") << status;
  }
}

TEST(TuningSnapshot, NamesTheActiveSet) {
  for (unsigned status = 0; status <= 0xFF; ++status) {
    const unsigned slot = status % 16;
    std::string name = std::to_string(slot);
    if (status >= 128) name = slot == 1 ? "A (Auto Setup)" : "C (Custom)";
    EXPECT_EQ(withByte(2, status).setName(), name) << status;
  }
}

TEST(TuningSnapshot, ReadsTheStatusBytesThatBasesSend) {
  struct Case {
    unsigned status;
    int slot;
    bool advanced;
    std::string_view name;
  };
  constexpr std::array cases{
      Case{0x83, 3, false, "C (Custom)"}, Case{0x81, 1, false, "A (Auto Setup)"},
      Case{0x03, 3, true, "3"},           Case{0x01, 1, true, "1"},
      Case{0x05, 5, true, "5"},           Case{0x00, 0, true, "0"},
      Case{0x80, 0, false, "C (Custom)"}, Case{0x71, 1, true, "1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.status);
    const TuningSnapshot read = withByte(2, c.status);
    EXPECT_EQ(read.slot(), c.slot);
    EXPECT_EQ(read.isAdvancedMode(), c.advanced);
    EXPECT_EQ(read.setName(), c.name);
  }
}

TEST(TuningSnapshot, FindsEveryParametersByte) {
  const std::map<P::Case, std::size_t> offsets{
      {P::slot, 2},           {P::sensitivity, 3},           {P::forceFeedback, 4},
      {P::vibration, 5},      {P::brakeLevelIndicator, 6},   {P::forceFeedbackScaling, 7},
      {P::driftMode, 9},      {P::forceEffect, 10},          {P::springEffect, 11},
      {P::damperEffect, 12},  {P::naturalDamper, 13},        {P::naturalFriction, 14},
      {P::brakeForce, 16},    {P::forceEffectIntensity, 17}, {P::analogPaddles, 19},
      {P::interpolation, 20}, {P::naturalInertia, 21},       {P::fullForce, 22},
  };
  ASSERT_EQ(offsets.size(), 18U);
  const Bytes bytes = report();
  for (const auto& [parameter, offset] : offsets) {
    EXPECT_EQ(snapshot(bytes).rawValue(parameter), bytes[offset]) << P(parameter).code();
  }
}

TEST(TuningSnapshot, TheSlotsRawValueIsTheWholeStatusByte) {
  EXPECT_EQ(withByte(2, 0x83).rawValue(P::slot), 0x83);
  EXPECT_EQ(withByte(2, 0x83).value(P::slot, noProduct), 0x83);
}

TEST(TuningSnapshot, DecodesValuesAsTheProductsMenuDoes) {
  const auto podium = FanatecProduct::lookup(0x0006);
  const auto clubSport = FanatecProduct::lookup(0x0001);
  EXPECT_EQ(withByte(3, 0x7D).value(P::sensitivity, podium), 2520);
  EXPECT_EQ(withByte(3, 0x7D).value(P::sensitivity, noProduct), 2520);
  EXPECT_EQ(withByte(3, 0x5A).value(P::sensitivity, clubSport), 900);
  EXPECT_EQ(withByte(4, 0x4B).value(P::forceFeedback, podium), 75);
  EXPECT_EQ(withByte(10, 0x0C).value(P::forceEffect, podium), 120);
  EXPECT_EQ(withByte(9, 0xFB).value(P::driftMode, noProduct), -5);
  EXPECT_EQ(withByte(6, 0xFF).value(P::brakeLevelIndicator, podium), 255);
}

TEST(TuningSnapshot, DumpsItsBytes) {
  Bytes bytes(64);
  bytes[0] = 0xFF;
  bytes[1] = 0x03;
  bytes[2] = 0x82;
  bytes[63] = 0x0A;
  std::string dump = "ff 03 82";
  for (int i = 3; i < 63; ++i) dump += " 00";
  dump += " 0a";
  EXPECT_EQ(snapshot(bytes).hexDump(), dump);
  EXPECT_EQ(dump.size(), 64U * 3 - 1);
}

TEST(TuningSnapshot, IsEqualByBytesAndTime) {
  const TuningSnapshot one = snapshot(report());
  EXPECT_EQ(one, snapshot(report()));
  EXPECT_NE(one, withByte(63, 0x00));
  EXPECT_NE(one, TuningSnapshot::fromReport(report(), received + std::chrono::microseconds(1)));
}

}  // namespace
}  // namespace quorvane::tuning_snapshot_test
