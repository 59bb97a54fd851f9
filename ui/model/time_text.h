#pragma once

#include <QString>

#include "support/clock.h"

namespace quorvane {

// The local time of day with seconds, in the format of the locale; no date.
QString timeText(WallClock::time_point time);

// The local time of day without seconds, in the format of the locale: "14:02".
QString shortTimeText(WallClock::time_point time);

// The local day and time, as seen at `now`: "today 14:02", "yesterday 22:10", "3 May 22:10".
QString dayAndTimeText(WallClock::time_point time, WallClock::time_point now);

// The longest text that timeText() can give in the current locale, for columns in a fixed font.
QString longestTimeText();

}  // namespace quorvane
