#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "support/clock.h"

namespace quorvane {

// A time in whole seconds, as written to files.
using WallSeconds = std::chrono::sys_seconds;

WallSeconds wholeSeconds(WallClock::time_point time);  // rounds down

// ISO 8601 in UTC without fractional seconds: "2026-03-01T09:30:00Z".
std::string iso8601(WallSeconds time);
std::string iso8601(WallClock::time_point time);

// In the user's time zone: "2026-03-01 10:30:00". Follows $TZ.
std::string localTimeText(WallSeconds time);

// Parses only the ISO 8601 form.
std::optional<WallSeconds> parseISO8601(std::string_view text);

}  // namespace quorvane
