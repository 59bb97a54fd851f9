#include "hid/report_summary.h"

#include <array>

#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr std::array<std::string_view, 3> kindTexts{"input", "output", "feature"};
constexpr std::string_view overflow = "the bits of a report overflow";

}  // namespace

std::string_view rawValue(HIDReportSummary::Kind kind) {
  return kindTexts[static_cast<std::size_t>(kind)];
}

std::optional<HIDReportSummary::Kind> reportKind(std::string_view rawValue) {
  for (std::size_t i = 0; i < kindTexts.size(); ++i) {
    if (kindTexts[i] == rawValue) return static_cast<HIDReportSummary::Kind>(i);
  }
  return std::nullopt;
}

void HIDReportTally::add(HIDReportSummary::Kind kind, std::int64_t reportID,
                         std::int64_t reportSize, std::int64_t reportCount,
                         std::int64_t usagePage) {
  Entry& entry = entries_[{rawValue(kind), reportID}];
  entry.bits = checkedAdd(entry.bits, checkedMultiply(reportSize, reportCount, overflow), overflow);
  ++entry.elementCount;
  entry.usagePages.insert(usagePage);
}

std::vector<HIDReportSummary> HIDReportTally::summaries() const {
  std::vector<HIDReportSummary> result;
  result.reserve(entries_.size());
  for (const auto& [key, entry] : entries_) {
    result.push_back({*reportKind(key.first),
                      key.second,
                      checkedAdd(entry.bits, 7, overflow) / 8,
                      entry.elementCount,
                      {entry.usagePages.begin(), entry.usagePages.end()}});
  }
  return result;
}

}  // namespace quorvane
