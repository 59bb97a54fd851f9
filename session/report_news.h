#pragma once

#include <optional>

#include "protocol/wheel_status.h"
#include "support/bytes.h"

namespace quorvane {

// Tells the reports that say something new about a base from the thousand a second that do not.
// Identity and tuning reports are news each time, a wheel status when it differs from the one
// before it. One thread.
class ReportNews {
 public:
  // Whether the report is news. Remembers its wheel status.
  bool isNews(ByteView report);

 private:
  std::optional<WheelStatus> status_;
};

}  // namespace quorvane
