#include "session/report_filter.h"

#include <utility>

#include "protocol/identity_report.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

bool ReportFilter::passes(ByteView report) {
  if (const auto status = WheelStatus::fromReport(report)) {
    return std::exchange(status_, status) != status;
  }
  return IdentityReport::matches(report) || TuningSnapshot::matches(report);
}

}  // namespace quorvane
