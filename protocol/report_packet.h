#pragma once

#include <cstdint>
#include <string>

#include "support/bytes.h"

namespace quorvane {

// One HID output report.
struct HIDReportPacket {
  std::uint8_t reportID = 0;  // 0: the device uses no report IDs
  Bytes payload;              // without the report ID

  // As sent: the report ID, unless it is 0, and the payload.
  Bytes wireBytes() const;
  std::string hexDump() const { return quorvane::hexDump(wireBytes()); }

  bool operator==(const HIDReportPacket&) const = default;
};

}  // namespace quorvane
