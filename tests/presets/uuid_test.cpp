#include "presets/uuid.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/thread.h"

namespace quorvane {
namespace {

constexpr std::string_view someID = "6F1C2A34-8B0E-4D27-9C51-3E8A77B2D410";

std::string lower(std::string_view text) {
  std::string result;
  for (const char c : text) {
    result += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return result;
}

TEST(UUID, IsAllZerosUnlessMadeOtherwise) {
  EXPECT_EQ(UUID().text(), "00000000-0000-0000-0000-000000000000");
  EXPECT_EQ(UUID(), UUID::parse("00000000-0000-0000-0000-000000000000"));
}

TEST(UUID, IsReadInEitherCaseAndWrittenInUpperCase) {
  for (const std::string_view text :
       {someID, std::string_view("6f1c2a34-8b0e-4d27-9c51-3e8a77b2d410"),
        std::string_view("6F1c2a34-8B0e-4d27-9c51-3E8A77b2D410")}) {
    const auto id = UUID::parse(text);
    ASSERT_TRUE(id) << text;
    EXPECT_EQ(id->text(), someID);
    EXPECT_EQ(id, UUID::parse(someID));
  }
}

TEST(UUID, IsReadOfAnyVersion) {
  for (const std::string text :
       {"00000000-0000-0000-0000-000000000001", "FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF",
        "6BA7B810-9DAD-11D1-80B4-00C04FD430C8", "01234567-89AB-CDEF-0123-456789ABCDEF"}) {
    const auto id = UUID::parse(text);
    ASSERT_TRUE(id) << text;
    EXPECT_EQ(id->text(), text);
  }
}

TEST(UUID, EveryDigitCounts) {
  std::set<std::string> seen;
  for (std::size_t place = 0; place < someID.size(); ++place) {
    if (someID[place] == '-') continue;
    for (const char digit : std::string_view("0123456789ABCDEF")) {
      std::string text(someID);
      text[place] = digit;
      const auto id = UUID::parse(text);
      ASSERT_TRUE(id) << text;
      EXPECT_EQ(id->text(), text);
      seen.insert(id->text());
    }
  }
  EXPECT_EQ(seen.size(), 32U * 15 + 1);
}

TEST(UUID, NoOtherByteStandsInAnyPlace) {
  for (std::size_t place = 0; place < someID.size(); ++place) {
    for (int value = 0; value <= 0xFF; ++value) {
      std::string text(someID);
      text[place] = static_cast<char>(value);
      const bool belongs = someID[place] == '-' ? value == '-' : std::isxdigit(value) != 0;
      EXPECT_EQ(UUID::parse(text).has_value(), belongs) << place << " " << value;
    }
  }
}

TEST(UUID, NoOtherFormIsRead) {
  const std::string text(someID);
  const std::vector<std::string> cases{
      "",
      " ",
      "-",
      "{" + text + "}",
      "(" + text + ")",
      "urn:uuid:" + text,
      " " + text,
      text + " ",
      text + "\n",
      text + "0",
      "0" + text,
      text.substr(1),
      text.substr(0, 35),
      "6F1C2A348B0E4D279C513E8A77B2D410",
      "6F1C2A34-8B0E-4D27-9C513E8A77B2D4100",
      "6F1C2A3-48B0E-4D27-9C51-3E8A77B2D410",
      "6F1C2A34-8B0E-4D27-9C51-3E8A-7B2D410",
      "0x1C2A34-8B0E-4D27-9C51-3E8A77B2D410",
      std::string(36, '-'),
      std::string(36, '0'),
      text + std::string(1, '\0'),
      text + std::string("\0garbage", 8),
      text.substr(0, 35) + std::string(1, '\0'),
      std::string(1, '\0') + text.substr(1),
      std::string(36, '\0'),
  };
  for (const std::string& other : cases) EXPECT_EQ(UUID::parse(other), std::nullopt) << other;
}

TEST(UUID, ItsTextIsReadBack) {
  for (int i = 0; i < 1000; ++i) {
    const UUID id = UUID::random();
    ASSERT_EQ(UUID::parse(id.text()), id);
    ASSERT_EQ(UUID::parse(lower(id.text())), id);
  }
}

TEST(UUID, RandomOnesAreOfVersionFourAndTheirVariant) {
  for (int i = 0; i < 1000; ++i) {
    const std::string text = UUID::random().text();
    ASSERT_EQ(text[14], '4') << text;
    ASSERT_NE(std::string_view("89AB").find(text[19]), std::string_view::npos) << text;
  }
}

TEST(UUID, RandomOnesDifferFromEachOther) {
  std::mutex lock;
  std::set<std::string> seen;
  std::vector<Thread> threads;
  threads.reserve(4);
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back("makes", [&] {
      for (int n = 0; n < 1000; ++n) {
        const std::string text = UUID::random().text();
        const std::lock_guard held(lock);
        seen.insert(text);
      }
    });
  }
  threads.clear();
  EXPECT_EQ(seen.size(), 4000U);
}

TEST(UUID, EveryOtherBitOfRandomOnesIsSetAtTimes) {
  std::array<int, 36> allDigits{};
  for (int i = 0; i < 1000; ++i) {
    const std::string text = UUID::random().text();
    for (std::size_t place = 0; place < text.size(); ++place) {
      if (text[place] == '-') continue;
      const int digit = std::stoi(text.substr(place, 1), nullptr, 16);
      allDigits[place] |= 1 << digit;
    }
  }
  for (std::size_t place = 0; place < someID.size(); ++place) {
    int expected = 0xFFFF;
    if (someID[place] == '-') expected = 0;
    if (place == 14) expected = 1 << 4;
    if (place == 19) expected = 0xF << 8;
    EXPECT_EQ(allDigits[place], expected) << place;
  }
}

}  // namespace
}  // namespace quorvane
