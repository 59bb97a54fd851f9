#include "support/wall_time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/scoped_variable.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;

WallClock::time_point at(std::int64_t secondsSince1970) {
  return WallClock::time_point(std::chrono::seconds(secondsSince1970));
}

WallSeconds second(std::int64_t secondsSince1970) {
  return WallSeconds(std::chrono::seconds(secondsSince1970));
}

constexpr std::int64_t beginOfYear0 = -62167219200;
constexpr std::int64_t endOfYear9999 = 253402300799;

std::string twoDigits(int number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

// RAII: sets the process's time zone.
class TimeZone {
 public:
  explicit TimeZone(const char* name) {
    if (const char* const before = std::getenv("TZ")) before_ = before;
    ::setenv("TZ", name, 1);
    ::tzset();
  }
  ~TimeZone() {
    if (before_) {
      ::setenv("TZ", before_->c_str(), 1);
    } else {
      ::unsetenv("TZ");
    }
    ::tzset();
  }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

 private:
  std::optional<std::string> before_;
};

TEST(Iso8601, WritesDateAndTimeInUtc) {
  const std::vector<std::pair<std::int64_t, std::string>> cases{
      {0, "1970-01-01T00:00:00Z"},          {-1, "1969-12-31T23:59:59Z"},
      {59, "1970-01-01T00:00:59Z"},         {86399, "1970-01-01T23:59:59Z"},
      {86400, "1970-01-02T00:00:00Z"},      {951782400, "2000-02-29T00:00:00Z"},
      {1772357400, "2026-03-01T09:30:00Z"}, {4107542399, "2100-02-28T23:59:59Z"},
      {4107542400, "2100-03-01T00:00:00Z"},
  };
  for (const auto& [seconds, text] : cases) EXPECT_EQ(iso8601(at(seconds)), text);
}

TEST(Iso8601, DropsFractionsOfASecond) {
  EXPECT_EQ(iso8601(at(1772357400) + 1ms), "2026-03-01T09:30:00Z");
  EXPECT_EQ(iso8601(at(1772357400) + 999999us), "2026-03-01T09:30:00Z");
  EXPECT_EQ(iso8601(at(0) - 1us), "1969-12-31T23:59:59Z");
}

TEST(Iso8601, KnowsNoTimeZone) {
  for (const char* const zone : {"UTC", "EST5EDT", "XYZ-14", "ABC+12:30"}) {
    const TimeZone here(zone);
    EXPECT_EQ(iso8601(at(1772357400)), "2026-03-01T09:30:00Z") << zone;
  }
}

TEST(Iso8601, WritesEveryYearOfFourDigits) {
  EXPECT_EQ(iso8601(second(beginOfYear0)), "0000-01-01T00:00:00Z");
  EXPECT_EQ(iso8601(second(-30610224000)), "1000-01-01T00:00:00Z");
  EXPECT_EQ(iso8601(second(endOfYear9999)), "9999-12-31T23:59:59Z");
}

TEST(WholeSeconds, IsTheSecondThatTheTimeLiesIn) {
  EXPECT_EQ(wholeSeconds(at(5)), second(5));
  EXPECT_EQ(wholeSeconds(at(5) + 999999999ns), second(5));
  EXPECT_EQ(wholeSeconds(at(5) - 1ns), second(4));
  EXPECT_EQ(wholeSeconds(at(0) - 1ns), second(-1));
  EXPECT_EQ(wholeSeconds(at(-5)), second(-5));
}

TEST(ParseISO8601, ReadsDateAndTimeInUtc) {
  const std::vector<std::pair<std::string, std::int64_t>> cases{
      {"1970-01-01T00:00:00Z", 0},
      {"1969-12-31T23:59:59Z", -1},
      {"2000-02-29T00:00:00Z", 951782400},
      {"2026-03-01T09:30:00Z", 1772357400},
      {"2100-02-28T23:59:59Z", 4107542399},
      {"2100-03-01T00:00:00Z", 4107542400},
      {"0000-01-01T00:00:00Z", beginOfYear0},
      {"9999-12-31T23:59:59Z", endOfYear9999},
  };
  for (const auto& [text, seconds] : cases) EXPECT_EQ(parseISO8601(text), second(seconds)) << text;
}

TEST(ParseISO8601, ReadsBackWhatIsWritten) {
  constexpr std::int64_t step = 37 * 86400 + 3661;
  for (std::int64_t seconds = beginOfYear0; seconds <= endOfYear9999; seconds += step) {
    const std::string text = iso8601(second(seconds));
    ASSERT_EQ(text.size(), 20U) << text;
    ASSERT_EQ(parseISO8601(text), second(seconds)) << text;
  }
}

TEST(ParseISO8601, KnowsNoTimeZone) {
  for (const char* const zone : {"UTC", "EST5EDT", "XYZ-14", "ABC+12:30"}) {
    const TimeZone here(zone);
    EXPECT_EQ(parseISO8601("2026-03-01T09:30:00Z"), second(1772357400)) << zone;
  }
}

TEST(ParseISO8601, TakesTheDaysThatTheMonthHas) {
  const std::vector<std::pair<std::string, bool>> years{
      {"2023", false}, {"2024", true}, {"1900", false}, {"2000", true},
      {"2100", false}, {"0000", true}, {"0004", true},  {"9999", false},
  };
  for (const auto& [year, leaps] : years) {
    const std::vector<int> days{0, 31, leaps ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 0; month <= 99; ++month) {
      for (int day = 0; day <= 99; ++day) {
        const std::string text =
            year + "-" + twoDigits(month) + "-" + twoDigits(day) + "T12:00:00Z";
        const bool exists =
            month >= 1 && month <= 12 && day >= 1 && day <= days[static_cast<std::size_t>(month)];
        ASSERT_EQ(parseISO8601(text).has_value(), exists) << text;
      }
    }
  }
}

TEST(ParseISO8601, TakesTheTimesThatADayHas) {
  for (int number = 0; number <= 99; ++number) {
    const std::string digits = twoDigits(number);
    EXPECT_EQ(parseISO8601("2026-03-01T" + digits + ":00:00Z").has_value(), number < 24) << number;
    EXPECT_EQ(parseISO8601("2026-03-01T00:" + digits + ":00Z").has_value(), number < 60) << number;
    EXPECT_EQ(parseISO8601("2026-03-01T00:00:" + digits + "Z").has_value(), number < 60) << number;
  }
}

TEST(ParseISO8601, RefusesAnyOtherByteInAnyPlace) {
  const std::string text = "2011-11-11T11:11:11Z";
  for (std::size_t place = 0; place < text.size(); ++place) {
    const bool wantsDigit = text[place] >= '0' && text[place] <= '9';
    for (int value = 0; value <= 0xFF; ++value) {
      std::string other = text;
      other[place] = static_cast<char>(value);
      const bool isDigit = value >= '0' && value <= '9';
      if (wantsDigit && isDigit) continue;
      EXPECT_EQ(parseISO8601(other).has_value(), other == text) << place << " " << value;
    }
  }
}

TEST(ParseISO8601, RefusesEveryOtherLayout) {
  for (const std::string text : {"",
                                 "Z",
                                 "2026-03-01",
                                 "2026-03-01T09:30:00",
                                 "2026-03-01T09:30Z",
                                 "20260301T093000Z",
                                 "2026-03-01 09:30:00Z",
                                 "2026-03-01t09:30:00Z",
                                 "2026-03-01T09:30:00z",
                                 "2026-03-01T09:30:00.123Z",
                                 "2026-03-01T09:30:00.Z",
                                 "2026-03-01T09:30:00,5Z",
                                 "2026-03-01T09:30:00+00:00",
                                 "2026-03-01T09:30:00+0000",
                                 "2026-03-01T09:30:00-05:00",
                                 " 2026-03-01T09:30:00Z",
                                 "2026-03-01T09:30:00Z ",
                                 "2026-03-01T09:30:00Z\n",
                                 "2026-03-01T09:30:00ZZ",
                                 "2026-03-01T09:30:00UTC",
                                 "2026-3-01T09:30:00Z",
                                 "2026-03-1T09:30:00Z",
                                 "2026-03-01T9:30:00Z",
                                 "026-03-01T09:30:00Z",
                                 "12026-03-01T09:30:00Z",
                                 "+2026-03-01T09:30:00Z",
                                 "-2026-03-01T09:30:00Z",
                                 "-026-03-01T09:30:00Z",
                                 "2026-13-01T09:30:00Z",
                                 "2026-00-01T09:30:00Z",
                                 "2026-02-29T09:30:00Z",
                                 "2026-03-01T24:00:00Z",
                                 "2026-12-31T23:59:60Z",
                                 "2026-W09-7T09:30:00Z",
                                 "2026-060T09:30:00Z",
                                 "1772357400",
                                 "now"}) {
    EXPECT_EQ(parseISO8601(text), std::nullopt) << text;
  }
  EXPECT_EQ(parseISO8601(std::string_view("2026-03-01T09:30:00Z\0", 21)), std::nullopt);
  EXPECT_EQ(parseISO8601(std::string_view("2026-03-01T09:30:00\0", 20)), std::nullopt);
}

TEST(LocalTimeText, IsInTheUsersTimeZone) {
  const WallSeconds time = parseISO8601("2026-03-01T23:30:05Z").value();
  const std::vector<std::pair<std::string, std::string>> cases{
      {"UTC0", "2026-03-01 23:30:05"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", "2026-03-02 00:30:05"},
      {"AAA+5:30", "2026-03-01 18:00:05"}};
  for (const auto& [zone, text] : cases) {
    const ScopedVariable variable("TZ", zone);
    EXPECT_EQ(localTimeText(time), text);
  }
}

}  // namespace
}  // namespace quorvane
