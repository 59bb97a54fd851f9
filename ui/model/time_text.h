#pragma once

#include <QString>

#include "support/clock.h"

namespace quorvane {

// The time of day with its seconds, as people write it where the program runs; no date.
QString timeText(WallClock::time_point time);

}  // namespace quorvane
