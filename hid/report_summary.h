#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quorvane {

// Summary of one report of a device.
struct HIDReportSummary {
  enum class Kind { input, output, feature };

  Kind kind = Kind::input;
  std::int64_t reportID = 0;      // 0 when the descriptor declares none
  std::int64_t byteLength = 0;    // payload, rounded up from bits; without the report ID byte
  std::int64_t elementCount = 0;  // main items or elements in the report
  std::vector<std::int64_t> usagePages;  // distinct, ascending

  auto operator<=>(const HIDReportSummary&) const = default;
};

// "input", "output" or "feature".
std::string_view rawValue(HIDReportSummary::Kind kind);

// The exact inverse of rawValue(); none for any other text.
std::optional<HIDReportSummary::Kind> reportKind(std::string_view rawValue);

// Builds the summaries from the items of a descriptor or from a list of elements.
class HIDReportTally {
 public:
  // Adds one main item or element of `reportSize` x `reportCount` bits. Overflow of a total ends
  // the program.
  void add(HIDReportSummary::Kind kind, std::int64_t reportID, std::int64_t reportSize,
           std::int64_t reportCount, std::int64_t usagePage);

  // Sorted by the kind's text (feature, input, output), then by report ID. Leaves the tally empty.
  std::vector<HIDReportSummary> takeSummaries();

 private:
  HIDReportSummary& entry(HIDReportSummary::Kind kind, std::int64_t reportID);

  // In the order of the result. byteLength holds bits until takeSummaries().
  std::vector<HIDReportSummary> entries_;
};

}  // namespace quorvane
