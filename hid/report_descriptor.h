#pragma once

#include <string>
#include <utility>
#include <vector>

#include "hid/report_summary.h"
#include "support/bytes.h"

namespace quorvane {

// The raw bytes of a HID report descriptor (USB Device Class Definition for HID 1.11, 6.2.2).
class HIDReportDescriptor {
 public:
  HIDReportDescriptor() = default;
  explicit HIDReportDescriptor(Bytes bytes) : bytes_(std::move(bytes)) {}

  const Bytes& bytes() const { return bytes_; }

  // One entry per (kind, report ID). Deliberately minimal: uses usage page, report size, count and
  // ID, and ignores push and pop, local items and collections; HIDElements is the full parser. A
  // truncated descriptor gives what was read so far. Overflow of a total ends the program.
  std::vector<HIDReportSummary> summaries() const;

  std::string hexDump() const { return quorvane::hexDump(bytes_); }

  bool operator==(const HIDReportDescriptor&) const = default;

 private:
  Bytes bytes_;
};

}  // namespace quorvane
