#pragma once

#include <optional>

#include "protocol/wheel_status.h"
#include "support/bytes.h"

namespace quorvane {

// Lets pass the reports that are new information about a base, out of a thousand a second. Identity
// and tuning reports always pass, a wheel status when it differs from the previous one. One thread.
class ReportFilter {
 public:
  // Remembers the report's wheel status.
  bool passes(ByteView report);

 private:
  std::optional<WheelStatus> status_;
};

}  // namespace quorvane
