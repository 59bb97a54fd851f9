#pragma once

#include <string>

#include "presets/uuid.h"
#include "support/clock.h"

namespace quorvane {

// One entry of the log that the window shows.
struct LogEntry {
  UUID id = UUID::random();
  WallClock::time_point time = WallClock::now();
  std::string text;
  bool isError = false;

  bool operator==(const LogEntry&) const = default;
};

}  // namespace quorvane
