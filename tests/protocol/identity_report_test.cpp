#include "protocol/identity_report.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane::identity_report_test {
namespace {

constexpr WallClock::time_point received{std::chrono::seconds(1772357400)};

const std::map<std::int64_t, std::string_view> bases{
    {1, "ClubSport Wheel Base V2"},        {2, "ClubSport Wheel Base V2.5"},
    {3, "CSL Elite Wheel Base (rev 1.0)"}, {4, "CSL Elite Wheel Base (rev 1.1)"},
    {5, "CSL Elite Wheel Base+ (PS4)"},    {6, "Podium Wheel Base DD1"},
    {7, "Podium Wheel Base DD1 (PS4)"},    {8, "Podium Wheel Base DD2"},
    {9, "GT DD Pro Wheel Base"},           {10, "CSL DD Wheel Base"},
    {11, "ClubSport DD Wheel Base"},       {12, "ClubSport DD+ Wheel Base"},
    {13, "Podium Wheel Base DD"},          {14, "Podium Wheel Base DD+"},
    {99, "ClubSport Wheel Base V1"},
};

const std::map<std::int64_t, std::string_view> wheels{
    {1, "ClubSport Steering Wheel BMW M3 GT2"},
    {2, "ClubSport Steering Wheel Formula Carbon"},
    {3, "ClubSport Steering Wheel Porsche 918 RSR"},
    {7, "CSL Elite Steering Wheel P1 (Xbox)"},
    {8, "CSL Elite Steering Wheel P1 (PS4)"},
    {9, "CSL Elite Steering Wheel McLaren GT3 V1"},
    {10, "ClubSport Steering Wheel Formula V2"},
    {11, "CSL Elite Steering Wheel McLaren GT3 V2"},
    {14, "Podium Steering Wheel Bentley GT3"},
    {15, "Podium Steering Wheel BMW M4 GT3"},
    {16, "GT DD Pro Steering Wheel"},
    {18, "CSL Elite Steering Wheel WRC"},
    {19, "ClubSport Steering Wheel BMW M3 GT2 V2"},
    {20, "ClubSport Steering Wheel RS"},
    {22, "ClubSport Steering Wheel F1 Esports V2"},
    {23, "Podium Steering Wheel BMW M4 GT3 (rev 2)"},
    {24, "GT Steering Wheel Extreme"},
    {27, "CSL Elite Steering Wheel Porsche Vision GT"},
    {28, "ClubSport Steering Wheel Formula V3"},
    {29, "CSL Steering Wheel GT3"},
};

Bytes report(std::uint8_t baseType = 0, std::uint8_t layout = 0, std::uint8_t wheel = 0,
             std::uint8_t module = 0) {
  Bytes bytes(64);
  bytes[0] = 0xFF;
  bytes[1] = 0x08;
  bytes[2] = baseType;
  bytes[3] = layout;
  bytes[24] = wheel;
  bytes[31] = module;
  return bytes;
}

IdentityReport identity(const Bytes& bytes) {
  return IdentityReport::fromReport(bytes, received).value();
}

// Calls with every byte value.
template <typename Check>
void forEveryByte(Check check) {
  for (unsigned value = 0; value <= 0xFF; ++value) check(static_cast<std::uint8_t>(value));
}

TEST(IdentityReport, HasItsConstants) {
  EXPECT_EQ(IdentityReport::reportID, 0xFF);
  EXPECT_EQ(IdentityReport::subID, 0x08);
}

TEST(IdentityReport, IsMadeOfExactlySixtyFourBytes) {
  for (std::size_t length = 0; length <= 130; ++length) {
    Bytes bytes = report();
    bytes.resize(length);
    EXPECT_EQ(IdentityReport::fromReport(bytes, received).has_value(), length == 64) << length;
  }
}

TEST(IdentityReport, BeginsWithItsReportIDAndSubID) {
  Bytes bytes = report();
  for (unsigned id = 0; id <= 0xFF; ++id) {
    for (unsigned sub = 0; sub <= 0xFF; ++sub) {
      bytes[0] = static_cast<std::uint8_t>(id);
      bytes[1] = static_cast<std::uint8_t>(sub);
      ASSERT_EQ(IdentityReport::fromReport(bytes, received).has_value(), id == 0xFF && sub == 0x08)
          << id << " " << sub;
    }
  }
}

TEST(IdentityReport, KeepsTheBytesAndTheTime) {
  Bytes bytes = report(0x0A, 0x00, 0x12, 0x02);
  for (std::size_t i = 32; i < 64; ++i) bytes[i] = static_cast<std::uint8_t>(i);
  EXPECT_EQ(identity(bytes).raw(), bytes);
  EXPECT_EQ(identity(bytes).receivedAt(), received);
}

TEST(IdentityReport, ListsTheNamesItKnows) {
  EXPECT_EQ(bases.size(), 15U);
  EXPECT_EQ(IdentityReport::baseNames(), bases);
  EXPECT_EQ(wheels.size(), 20U);
  EXPECT_EQ(IdentityReport::wheelNames(), wheels);
  EXPECT_EQ(&IdentityReport::baseNames(), &IdentityReport::baseNames());
  EXPECT_EQ(&IdentityReport::wheelNames(), &IdentityReport::wheelNames());
}

TEST(IdentityReport, NamesEveryBaseTypeOfTheClassicLayout) {
  forEveryByte([](std::uint8_t code) {
    const IdentityReport read = identity(report(code, 0));
    EXPECT_EQ(read.baseType(), code);
    const auto known = bases.find(code);
    EXPECT_EQ(read.baseName(), known == bases.end() ? fmt::format("unknown base type {}", code)
                                                    : std::string(known->second));
  });
}

TEST(IdentityReport, KnowsNoBaseTypeInTheExtendedLayout) {
  forEveryByte([](std::uint8_t layout) {
    if (layout == 0) return;
    for (const std::uint8_t code : Bytes{0x00, 0x0A, 0x63, 0xFF}) {
      const IdentityReport read = identity(report(code, layout));
      EXPECT_EQ(read.baseType(), std::nullopt);
      EXPECT_EQ(read.baseName(), "unknown (extended layout)");
    }
  });
}

TEST(IdentityReport, NamesTheBasesOfTheExamples) {
  EXPECT_EQ(identity(report(0x0A, 0x00)).baseName(), "CSL DD Wheel Base");
  EXPECT_EQ(identity(report(0x0A, 0x01)).baseName(), "unknown (extended layout)");
  EXPECT_EQ(identity(report(0x0A, 0x01)).baseType(), std::nullopt);
  EXPECT_EQ(identity(report(42, 0x00)).baseName(), "unknown base type 42");
  EXPECT_EQ(identity(report(0, 0x00)).baseName(), "unknown base type 0");
}

TEST(IdentityReport, NamesEveryWheelCode) {
  forEveryByte([](std::uint8_t code) {
    const IdentityReport read = identity(report(0, 0, code));
    EXPECT_EQ(read.wheelCode(), code);
    const auto known = wheels.find(code);
    std::string name = known == wheels.end() ? fmt::format("unknown wheel code 0x{:02X}", code)
                                             : std::string(known->second);
    if (code == 0) name = "nothing attached";
    if (code == 255) name = "extended-info device";
    EXPECT_EQ(read.wheelName(), name);
  });
}

TEST(IdentityReport, ShowsAnUnknownWheelCodeInTwoUpperCaseDigits) {
  EXPECT_EQ(identity(report(0, 0, 0x05)).wheelName(), "unknown wheel code 0x05");
  EXPECT_EQ(identity(report(0, 0, 0xAB)).wheelName(), "unknown wheel code 0xAB");
  EXPECT_EQ(identity(report(0, 0, 0xFF)).wheelName(), "extended-info device");
}

TEST(IdentityReport, NamesEveryModuleCode) {
  const std::map<std::uint8_t, std::string_view> modules{
      {0, "none"}, {1, "Podium Button Module Endurance"}, {2, "Podium Button Module Rally"}};
  forEveryByte([&](std::uint8_t code) {
    const IdentityReport read = identity(report(0, 0, 0, code));
    EXPECT_EQ(read.moduleCode(), code);
    const auto known = modules.find(code);
    EXPECT_EQ(read.moduleName(), known == modules.end() ? fmt::format("unknown module {}", code)
                                                        : std::string(known->second));
  });
  EXPECT_EQ(identity(report(0, 0, 0, 3)).moduleName(), "unknown module 3");
}

TEST(IdentityReport, ReadsNoOtherByte) {
  Bytes noisy(64, 0xEE);
  noisy[0] = 0xFF;
  noisy[1] = 0x08;
  noisy[2] = 14;
  noisy[3] = 0;
  noisy[24] = 29;
  noisy[31] = 2;
  const IdentityReport read = identity(noisy);
  EXPECT_EQ(read.baseName(), "Podium Wheel Base DD+");
  EXPECT_EQ(read.wheelName(), "CSL Steering Wheel GT3");
  EXPECT_EQ(read.moduleName(), "Podium Button Module Rally");
}

TEST(IdentityReport, DumpsItsBytes) {
  std::string dump = "ff 08 0a";
  for (int i = 3; i < 64; ++i) dump += " 00";
  EXPECT_EQ(identity(report(0x0A)).hexDump(), dump);
}

TEST(IdentityReport, IsEqualByBytesAndTime) {
  const IdentityReport one = identity(report(1, 0, 2, 1));
  EXPECT_EQ(one, identity(report(1, 0, 2, 1)));
  EXPECT_NE(one, identity(report(1, 0, 2, 2)));
  EXPECT_NE(one,
            IdentityReport::fromReport(report(1, 0, 2, 1), received + std::chrono::seconds(1)));
}

}  // namespace
}  // namespace quorvane::identity_report_test
