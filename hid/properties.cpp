#include <algorithm>
#include <utility>

#include "hid/port.h"
#include "hid/report_descriptor.h"

namespace quorvane {
namespace {

std::int64_t largestReport(const std::vector<HIDReportSummary>& reports,
                           HIDReportSummary::Kind kind, bool usesReportIDs) {
  std::int64_t largest = 0;
  for (const HIDReportSummary& report : reports) {
    if (report.kind == kind) largest = std::max(largest, report.byteLength);
  }
  return largest == 0 || !usesReportIDs ? largest : largest + 1;
}

}  // namespace

std::optional<HIDProperty> propertyIn(const HIDProperties& properties, std::string_view key) {
  const auto found = properties.find(key);
  if (found == properties.end()) return std::nullopt;
  return std::visit([](auto value) { return std::optional<HIDProperty>(std::move(value)); },
                    found->second);
}

void addDescriptorProperties(HIDProperties& properties, const Bytes& descriptor) {
  if (descriptor.empty()) return;
  const auto put = [&](std::string_view key, HIDProperty value) {
    properties.insert_or_assign(std::string(key), std::move(value));
  };
  put(HIDPropertyKey::reportDescriptor, descriptor);

  const HIDElements elements = HIDElements::parse(descriptor);
  if (elements.primaryUsage) {
    put(HIDPropertyKey::primaryUsagePage, std::int64_t{elements.primaryUsage->page});
    put(HIDPropertyKey::primaryUsage, std::int64_t{elements.primaryUsage->first});
  }

  using Kind = HIDReportSummary::Kind;
  const auto reports = HIDReportDescriptor(descriptor).summaries();
  const bool ids = elements.usesReportIDs;
  put(HIDPropertyKey::maxInputReportSize, largestReport(reports, Kind::input, ids));
  put(HIDPropertyKey::maxOutputReportSize, largestReport(reports, Kind::output, ids));
  put(HIDPropertyKey::maxFeatureReportSize, largestReport(reports, Kind::feature, ids));
}

}  // namespace quorvane
