#include "support/wall_time.h"

#include <fmt/chrono.h>

namespace quorvane {

std::string iso8601(WallClock::time_point time) {
  return fmt::format(
      "{:%Y-%m-%dT%H:%M:%SZ}",
      fmt::gmtime(WallClock::to_time_t(std::chrono::floor<std::chrono::seconds>(time))));
}

}  // namespace quorvane
