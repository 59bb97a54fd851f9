#include "support/wall_time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

using namespace std::chrono_literals;

WallClock::time_point at(std::int64_t secondsSince1970) {
  return WallClock::time_point(std::chrono::seconds(secondsSince1970));
}

// Puts the process into another time zone while it lives.
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

}  // namespace
}  // namespace quorvane
