#pragma once

#include <string>

#include "support/clock.h"

namespace quorvane {

// ISO 8601 in UTC without fractional seconds: "2026-03-01T09:30:00Z".
std::string iso8601(WallClock::time_point time);

}  // namespace quorvane
