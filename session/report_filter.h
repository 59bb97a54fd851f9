#pragma once

#include <optional>

#include "protocol/wheel_status.h"
#include "support/bytes.h"

namespace quorvane {

// Selects the reports with new information from a base's thousand reports per second. Identity and
// tuning reports always pass; a wheel status passes when it differs from the previous one. Not
// thread-safe.
class ReportFilter {
 public:
  // Stores a wheel status for the next call.
  bool passes(ByteView report);

 private:
  std::optional<WheelStatus> status_;
};

}  // namespace quorvane
