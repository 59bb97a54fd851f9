#pragma once

#include <cstdint>
#include <string>

#include "support/bytes.h"
#include "support/clock.h"

namespace quorvane {

// One received report. With a report ID other than 0, the bytes always begin with it.
struct HIDInputReport {
  std::uint8_t reportID = 0;
  Bytes bytes;
  WallClock::time_point receivedAt;  // when it was read, which may be a while after it came

  std::string hexDump() const { return quorvane::hexDump(bytes); }
};

// One value of a report, as its descriptor explains it.
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
