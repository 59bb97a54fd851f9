#pragma once

#include <cstdint>
#include <string>

#include "support/bytes.h"
#include "support/clock.h"

namespace quorvane {

// One received report. The bytes begin with the report ID, unless that is 0.
struct HIDInputReport {
  std::uint8_t reportID = 0;
  Bytes bytes;
  WallClock::time_point receivedAt;  // when it was read; a batched report arrived earlier

  std::string hexDump() const { return quorvane::hexDump(bytes); }
};

// One value of a report, decoded by the descriptor.
struct HIDElementValue {
  std::int64_t usagePage = 0;
  std::int64_t usage = 0;
  std::int64_t reportID = 0;
  std::int64_t value = 0;
  std::int64_t min = 0;  // logical minimum and maximum
  std::int64_t max = 0;
  WallClock::time_point receivedAt;

  bool operator==(const HIDElementValue&) const = default;
};

}  // namespace quorvane
