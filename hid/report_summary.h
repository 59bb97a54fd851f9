#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quorvane {

// One line about one report of a device.
struct HIDReportSummary {
  enum class Kind { input, output, feature };

  Kind kind = Kind::input;
  std::int64_t reportID = 0;    // 0 when the descriptor declares none
  std::int64_t byteLength = 0;  // payload, rounded up from bits; the report ID byte is not counted
  std::int64_t elementCount = 0;         // main items or elements that contribute
  std::vector<std::int64_t> usagePages;  // distinct, ascending

  auto operator<=>(const HIDReportSummary&) const = default;
};

// "input", "output" or "feature".
std::string_view rawValue(HIDReportSummary::Kind kind);

// The exact inverse of rawValue; any other text gives no value.
std::optional<HIDReportSummary::Kind> reportKind(std::string_view rawValue);

// Adds up what a descriptor or an element list says of each report.
class HIDReportTally {
 public:
  // One main item or element of `reportSize` x `reportCount` bits. A total that overflows stops the
  // program.
  void add(HIDReportSummary::Kind kind, std::int64_t reportID, std::int64_t reportSize,
           std::int64_t reportCount, std::int64_t usagePage);

  // Sorted by the kind's text (feature, input, output), then by report ID. Leaves the tally empty.
  std::vector<HIDReportSummary> takeSummaries();

 private:
  HIDReportSummary& entry(HIDReportSummary::Kind kind, std::int64_t reportID);

  // In the order of the result; their byteLength holds bits until it is taken.
  std::vector<HIDReportSummary> entries_;
};

}  // namespace quorvane
