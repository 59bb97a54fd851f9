#include "session/report_filter.h"

#include <utility>

namespace quorvane {

std::optional<BaseReport> ReportFilter::pass(ByteView report) {
  if (const auto status = WheelStatus::fromReport(report)) {
    if (std::exchange(status_, status) == status) return std::nullopt;
    return *status;
  }
  const auto now = WallClock::now();
  if (auto identity = IdentityReport::fromReport(report, now)) return *std::move(identity);
  if (auto tuning = TuningSnapshot::fromReport(report, now)) return *std::move(tuning);
  return std::nullopt;
}

}  // namespace quorvane
