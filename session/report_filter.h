#pragma once

#include <optional>
#include <variant>

#include "protocol/identity_report.h"
#include "protocol/tuning_snapshot.h"
#include "protocol/wheel_status.h"
#include "support/bytes.h"

namespace quorvane {

// A decoded report of a base.
using BaseReport = std::variant<IdentityReport, TuningSnapshot, WheelStatus>;

// Selects and decodes the reports with new information from a base's thousand reports per second.
// Identity and tuning reports always pass; a wheel status passes when it differs from the previous
// one. Not thread-safe.
class ReportFilter {
 public:
  // The report, received now; none if it does not pass. Stores a wheel status for the next call.
  std::optional<BaseReport> pass(ByteView report);

 private:
  std::optional<WheelStatus> status_;
};

}  // namespace quorvane
