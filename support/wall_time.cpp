#include "support/wall_time.h"

#include <fmt/chrono.h>

#include <algorithm>
#include <ctime>

namespace quorvane {
namespace {

constexpr std::string_view layout = "0000-00-00T00:00:00Z";  // 0 stands for a digit

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool hasLayout(std::string_view text) {
  return std::equal(text.begin(), text.end(), layout.begin(), layout.end(),
                    [](char c, char wanted) { return wanted == '0' ? isDigit(c) : c == wanted; });
}

int number(std::string_view digits) {
  int value = 0;
  for (const char digit : digits) value = value * 10 + (digit - '0');
  return value;
}

}  // namespace

WallSeconds wholeSeconds(WallClock::time_point time) {
  return std::chrono::floor<std::chrono::seconds>(time);
}

std::string iso8601(WallSeconds time) {
  return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(time.time_since_epoch().count()));
}

std::string iso8601(WallClock::time_point time) { return iso8601(wholeSeconds(time)); }

std::string localTimeText(WallSeconds time) {
  const std::time_t seconds = time.time_since_epoch().count();
  std::tm local{};
  ::tzset();
  if (::localtime_r(&seconds, &local) == nullptr) return iso8601(time);
  return fmt::format("{:%Y-%m-%d %H:%M:%S}", local);
}

std::optional<WallSeconds> parseISO8601(std::string_view text) {
  using std::chrono::day, std::chrono::month, std::chrono::year;
  if (!hasLayout(text)) return std::nullopt;
  const std::chrono::year_month_day date(year(number(text.substr(0, 4))),
                                         month(static_cast<unsigned>(number(text.substr(5, 2)))),
                                         day(static_cast<unsigned>(number(text.substr(8, 2)))));
  const int hour = number(text.substr(11, 2));
  const int minute = number(text.substr(14, 2));
  const int second = number(text.substr(17, 2));
  if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
         std::chrono::seconds(second);
}

}  // namespace quorvane
