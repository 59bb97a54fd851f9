#include "protocol/wheel_status.h"

namespace quorvane {

std::optional<WheelStatus> WheelStatus::fromReport(ByteView report) {
  if (report.size() != length || report[0] != reportID || report[wheelOffset] == noWheel) {
    return std::nullopt;
  }
  return WheelStatus{littleEndian16(report[wheelOffset], report[wheelOffset + 1]),
                     littleEndian16(report[firmwareOffset], report[firmwareOffset + 1])};
}

}  // namespace quorvane
