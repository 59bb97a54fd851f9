#pragma once

#include <string>

#include "presets/uuid.h"
#include "support/clock.h"

namespace quorvane {

// One line of the log that people read.
struct LogEntry {
  UUID id = UUID::random();
  WallClock::time_point time = WallClock::now();
  std::string text;
  bool isError = false;

  bool operator==(const LogEntry&) const = default;
};

}  // namespace quorvane
