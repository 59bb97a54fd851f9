#include "support/text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

TEST(LowerCase, ChangesAsciiLettersOnly) {
  const std::vector<std::pair<std::string_view, std::string>> cases{
      {"", ""},
      {"SEN", "sen"},
      {"brF", "brf"},
      {"already lower 09", "already lower 09"},
      {"@[`{AZaz", "@[`{azaz"},
      {"\xC3\x84", "\xC3\x84"},
  };
  for (const auto& [text, lower] : cases) EXPECT_EQ(lowerCase(text), lower);
}

TEST(LowerCase, KeepsEveryOtherByte) {
  for (int value = 0; value <= 0xFF; ++value) {
    const char c = static_cast<char>(value);
    const bool upper = value >= 65 && value <= 90;
    const char expected = static_cast<char>(upper ? value + 32 : value);
    EXPECT_EQ(lowerCase(std::string_view(&c, 1)), std::string(1, expected)) << value;
  }
}

TEST(EqualIgnoringCase, ComparesWholeTexts) {
  struct Case {
    std::string_view a;
    std::string_view b;
    bool equal;
  };
  constexpr std::array cases{
      Case{"", "", true},       Case{"SEN", "sen", true},
      Case{"sEn", "SeN", true}, Case{"brF", "BRF", true},
      Case{"SEN", "SE", false}, Case{"SE", "SEN", false},
      Case{"SEN", "", false},   Case{"", "SEN", false},
      Case{"FF", "FF ", false}, Case{"FF", "FFS", false},
      Case{"a1_", "A1_", true}, Case{"@", "`", false},
      Case{"[", "{", false},    Case{"\xC3\x84", "\xC3\xA4", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(equalIgnoringCase(c.a, c.b), c.equal) << c.a << " and " << c.b;
  }
}

TEST(StartsWithIgnoringCase, ComparesTheBeginning) {
  EXPECT_TRUE(startsWithIgnoringCase("Mine: a", "mINE:"));
  EXPECT_TRUE(startsWithIgnoringCase("SEN", "sen"));
  EXPECT_TRUE(startsWithIgnoringCase("SEN", ""));
  EXPECT_TRUE(startsWithIgnoringCase("", ""));
  EXPECT_FALSE(startsWithIgnoringCase("SE", "SEN"));
  EXPECT_FALSE(startsWithIgnoringCase("ASEN", "SEN"));
}

TEST(ParseInteger, ReadsAWholeDecimalNumber) {
  const std::vector<std::pair<std::string_view, std::int64_t>> cases{
      {"0", 0},
      {"-0", 0},
      {"7", 7},
      {"007", 7},
      {"-5", -5},
      {"1080", 1080},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(parseInteger(text), value) << text;
}

TEST(ParseInteger, RefusesEverythingElse) {
  constexpr std::array cases{"",
                             " ",
                             "+",
                             "-",
                             "+5",
                             "+0",
                             "+9223372036854775807",
                             "+-5",
                             "-+5",
                             "--5",
                             "++5",
                             " 5",
                             "5 ",
                             "5\n",
                             "5.0",
                             "5e1",
                             "0x5",
                             "5%",
                             "five",
                             "1 0",
                             "1,0",
                             "+ 5",
                             "- 5",
                             "a",
                             "5-",
                             "1_000",
                             "9223372036854775808",
                             "-9223372036854775809",
                             "99999999999999999999999999"};
  for (const std::string_view text : cases) {
    EXPECT_EQ(parseInteger(text), std::nullopt) << '"' << text << '"';
  }
  EXPECT_EQ(parseInteger(std::string_view("5\0", 2)), std::nullopt);
}

TEST(ParseHexNumber, ReadsDigitsWithAnOptionalPrefix) {
  const std::vector<std::pair<std::string_view, std::uint32_t>> cases{
      {"0", 0},
      {"0x0", 0},
      {"20", 0x20},
      {"0x20", 0x20},
      {"0X20", 0x20},
      {"eb7", 0xEB7},
      {"0EB7", 0xEB7},
      {"0x0eB7", 0xEB7},
      {"00000EB7", 0xEB7},
      {"ffffffff", 0xFFFFFFFF},
      {"0xFFFFFFFF", 0xFFFFFFFF},
      {"0000000000000001", 1},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(parseHexNumber(text), value) << text;
}

TEST(ParseHexNumber, RefusesEverythingElse) {
  constexpr std::array cases{"",          " ",           "x",   "0x",      "0X",   "x20",
                             "0x0x20",    "-1",          "+1",  "0x-1",    "0x+1", " 20",
                             "20 ",       "2g",          "0xg", "20h",     "20\n", "0x 1",
                             "100000000", "0x100000000", "1.0", "\xC3\xA4"};
  for (const std::string_view text : cases) {
    EXPECT_EQ(parseHexNumber(text), std::nullopt) << '"' << text << '"';
  }
  EXPECT_EQ(parseHexNumber(std::string_view("20\0", 3)), std::nullopt);
}

TEST(OneLine, HasNothingThatSteersATerminal) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", ""},
      {"Grün 🏎", "Grün 🏎"},
      {"a\nb\r\tc", "a b  c"},
      {"\x1B[31mred\x07", " [31mred "},
      {"a\x7F"
       "b",
       "a b"},
      {"a\u0080b\u009Bc\u00A0d", "a b c\u00A0d"},
      {std::string("a\0b", 3), "a b"},
      {"\xC2", "\uFFFD"},
      {"a\xFF\xC0\x80z", "a\uFFFD\uFFFD\uFFFDz"},
      {"a\u2028b\u2029c", "a b c"},
      {"\u202Efdp.\u202C", " fdp. "},
      {"\u061C\u200E\u200F\u202A\u2066\u2069", "      "},
      {"\u200D\u2027\u202F\u2065\u206A\uFEFF", "\u200D\u2027\u202F\u2065\u206A\uFEFF"},
  };
  for (const auto& [text, wanted] : cases) EXPECT_EQ(oneLine(text), wanted) << text;
}

TEST(SafeLines, KeepsTheLineFeedsAlone) {
  EXPECT_EQ(safeLines("a\nb\r\n\tc\x1B[0m\u2028\n"), "a\nb \n c [0m \n");
  EXPECT_EQ(safeLines("\xFF\n"), "\uFFFD\n");
}

TEST(Counted, SaysOneAndMany) {
  EXPECT_EQ(counted(0, "value"), "0 values");
  EXPECT_EQ(counted(1, "value"), "1 value");
  EXPECT_EQ(counted(2, "preset"), "2 presets");
}

TEST(FoldedCase, ComparesLettersOfEveryAlphabetAndKeepsOtherBytesApart) {
  EXPECT_EQ(foldedCase("Spa 7"), U"spa 7");
  EXPECT_EQ(foldedCase("N\u00DCRBURG \u0416\u0394"), foldedCase("n\u00FCrburg \u0436\u03B4"));
  EXPECT_NE(foldedCase("\u00FC"), foldedCase("u"));
  EXPECT_EQ(foldedCase(std::string_view("A\0B", 3)), std::u32string(U"a\0b", 3));
  EXPECT_EQ(foldedCase("\xFF").size(), 1U);
  EXPECT_NE(foldedCase("\xFF"), foldedCase("\xFE"));
  EXPECT_NE(foldedCase("\xFF"), foldedCase("\u00FF"));
  EXPECT_EQ(foldedCase(""), U"");
}

}  // namespace
}  // namespace quorvane
