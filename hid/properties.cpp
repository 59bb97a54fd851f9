#include <algorithm>
#include <utility>

#include "hid/port.h"

namespace quorvane {
namespace {

// In bytes, including the report ID.
std::int64_t largestReport(const HIDElements& elements, HIDReportSummary::Kind kind) {
  constexpr std::uint64_t bitsPerByte = 8;
  std::uint64_t largest = 0;
  for (const HIDElement& element : elements.elements) {
    if (reportKind(element.type) != kind) continue;
    const std::uint64_t end = element.endBit();
    largest = std::max(largest, end / bitsPerByte + (end % bitsPerByte == 0 ? 0 : 1));
  }
  const bool hasID = largest > 0 && elements.usesReportIDs;
  return static_cast<std::int64_t>(largest) + (hasID ? 1 : 0);
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
  put(HIDPropertyKey::maxInputReportSize, largestReport(elements, Kind::input));
  put(HIDPropertyKey::maxOutputReportSize, largestReport(elements, Kind::output));
  put(HIDPropertyKey::maxFeatureReportSize, largestReport(elements, Kind::feature));
}

}  // namespace quorvane
