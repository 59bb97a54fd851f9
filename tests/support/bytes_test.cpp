#include "support/bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {
namespace {

TEST(HexDump, ShowsTwoLowerCaseDigitsAByteJoinedByOneSpace) {
  const std::vector<std::pair<Bytes, std::string>> cases{
      {{}, ""},
      {{0x00}, "00"},
      {{0x0A}, "0a"},
      {{0xFF, 0x03, 0x02}, "ff 03 02"},
      {{0x01, 0xAB}, "01 ab"},
      {{0x00, 0x00, 0x00}, "00 00 00"},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(hexDump(bytes), text);
}

TEST(HexDump, ShowsEveryByteValue) {
  constexpr std::string_view digits = "0123456789abcdef";
  for (unsigned value = 0; value <= 0xFF; ++value) {
    const std::array<std::uint8_t, 1> byte{static_cast<std::uint8_t>(value)};
    EXPECT_EQ(hexDump(byte), std::string({digits[value / 16], digits[value % 16]}));
  }
}

TEST(ParseHexBytes, ReadsWhatPeopleWrite) {
  const std::vector<std::pair<std::string_view, Bytes>> cases{
      {"ff", {0xFF}},
      {"FF", {0xFF}},
      {"fF", {0xFF}},
      {"0", {0x00}},
      {"00", {0x00}},
      {"7", {0x07}},
      {"0x7", {0x07}},
      {"0x7f", {0x7F}},
      {"0X7F", {0x7F}},
      {"ff0302", {0xFF, 0x03, 0x02}},
      {"0xff0302", {0xFF, 0x03, 0x02}},
      {"ff 03 02", {0xFF, 0x03, 0x02}},
      {"0xff 0x03 0x02", {0xFF, 0x03, 0x02}},
      {"ff 3 2", {0xFF, 0x03, 0x02}},
      {"0xFF03 2", {0xFF, 0x03, 0x02}},
      {"  ff  03  ", {0xFF, 0x03}},
      {"ff\t03\n02\r\n", {0xFF, 0x03, 0x02}},
      {"0123456789abcdefABCDEF",
       {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0xAB, 0xCD, 0xEF}},
  };
  for (const auto& [text, bytes] : cases) EXPECT_EQ(parseHexBytes(text), bytes) << text;
}

TEST(ParseHexBytes, RefusesEverythingElse) {
  constexpr std::array cases{"",       " ",     "\n\t",    "x",        "0x",    "0X",     "0x ",
                             "g",      "fg",    "-1",      "+1",       "123",   "0x123",  "ff 0x",
                             "ff 123", "ff,03", "ff:03",   "0xff0xfe", "ff.0",  "ff 0g",  "#ff",
                             "\\xff",  "ffh",   "f f x",   "0x0x1",    "ff\v0", "ff\f03", "0 x1",
                             "x0",     "0xx",   "\xC3\xA4"};
  for (const std::string_view text : cases) {
    EXPECT_EQ(parseHexBytes(text), std::nullopt) << '"' << text << '"';
  }
  EXPECT_EQ(parseHexBytes(std::string_view("ff\0", 3)), std::nullopt);
}

TEST(ParseHexBytes, ReadsBackEveryDump) {
  Bytes all;
  for (unsigned value = 0; value <= 0xFF; ++value) {
    all.push_back(static_cast<std::uint8_t>(value));
    EXPECT_EQ(parseHexBytes(hexDump(all)), all);
  }
}

TEST(LittleEndian16, PutsTheSecondByteHigh) {
  EXPECT_EQ(littleEndian16(0x00, 0x00), 0);
  EXPECT_EQ(littleEndian16(0x84, 0x03), 900);
  EXPECT_EQ(littleEndian16(0x38, 0x04), 1080);
  EXPECT_EQ(littleEndian16(0xFF, 0x00), 0x00FF);
  EXPECT_EQ(littleEndian16(0x00, 0xFF), 0xFF00);
  EXPECT_EQ(littleEndian16(0xFF, 0xFF), 0xFFFF);
}

}  // namespace
}  // namespace quorvane
