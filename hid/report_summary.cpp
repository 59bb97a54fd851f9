#include "hid/report_summary.h"

#include <algorithm>
#include <array>
#include <utility>

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
  HIDReportSummary& report = entry(kind, reportID);
  report.byteLength =
      checkedAdd(report.byteLength, checkedMultiply(reportSize, reportCount, overflow), overflow);
  ++report.elementCount;
  auto& pages = report.usagePages;
  const auto place = std::lower_bound(pages.begin(), pages.end(), usagePage);
  if (place == pages.end() || *place != usagePage) pages.insert(place, usagePage);
}

std::vector<HIDReportSummary> HIDReportTally::takeSummaries() {
  for (HIDReportSummary& report : entries_) {
    report.byteLength = checkedAdd(report.byteLength, 7, overflow) / 8;
  }
  return std::exchange(entries_, {});
}

HIDReportSummary& HIDReportTally::entry(HIDReportSummary::Kind kind, std::int64_t reportID) {
  const auto before = [&](const HIDReportSummary& report) {
    return report.kind == kind ? report.reportID < reportID
                               : rawValue(report.kind) < rawValue(kind);
  };
  const auto place = std::partition_point(entries_.begin(), entries_.end(), before);
  if (place != entries_.end() && place->kind == kind && place->reportID == reportID) return *place;
  return *entries_.insert(place, HIDReportSummary{kind, reportID, 0, 0, {}});
}

}  // namespace quorvane
