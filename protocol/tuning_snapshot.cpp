#include "protocol/tuning_snapshot.h"

namespace quorvane {

std::optional<TuningSnapshot> TuningSnapshot::fromReport(ByteView report,
                                                         WallClock::time_point receivedAt) {
  if (report.size() != length || report[0] != reportID || report[1] != subID) return std::nullopt;
  return TuningSnapshot(report, receivedAt);
}

TuningSnapshot::TuningSnapshot(ByteView report, WallClock::time_point receivedAt)
    : raw_(report.begin(), report.end()), receivedAt_(receivedAt) {}

std::string TuningSnapshot::setName() const {
  if (isAdvancedMode()) return std::to_string(slot());
  return slot() == 1 ? "A (Auto Setup)" : "C (Custom)";
}

}  // namespace quorvane
