#include "hid/device_info.h"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>
#include <utility>

#include "support/invariant.h"

namespace quorvane {
namespace {

// A location ID: the bus in the top byte, then one nibble per port in the path.
constexpr int busShift = 24;
constexpr int portBits = 4;
constexpr std::uint32_t portMask = 0xF;

template <typename Value>
Value propertyOr(const HIDDeviceHandle& device, std::string_view key, Value missing) {
  const auto property = device.property(key);
  if (!property) return missing;
  const auto* const value = std::get_if<Value>(&*property);
  return value == nullptr ? missing : *value;
}

std::int64_t number(const HIDDeviceHandle& device, std::string_view key) {
  return propertyOr<std::int64_t>(device, key, 0);
}

std::string text(const HIDDeviceHandle& device, std::string_view key) {
  return propertyOr<std::string>(device, key, {});
}

std::uint32_t hex(std::int64_t value) { return static_cast<std::uint32_t>(value); }

std::string identityString(const HIDDeviceInfo& info) {
  return fmt::format("{:04x}:{:04x}@{:08x}/{:x}:{:x}", hex(info.vendorID), hex(info.productID),
                     hex(info.locationID), hex(info.usagePage), hex(info.usage));
}

bool isCommandLength(const HIDReportSummary& report) {
  return report.byteLength == 7 || report.byteLength == 8;
}

}  // namespace

std::string HIDDeviceInfo::displayName() const {
  if (isFanatec()) {
    if (const auto known = knownProduct()) return std::string(known->name);
  }
  if (!product.empty()) return product;
  return fmt::format("{:04X}:{:04X}", hex(vendorID), hex(productID));
}

std::string HIDDeviceInfo::usbPort() const {
  const std::uint32_t bus = hex(locationID) >> busShift;
  std::string port = bus == 0 ? "" : fmt::format("{}", bus);
  char separator = '-';
  for (int shift = busShift - portBits; shift >= 0 && !port.empty(); shift -= portBits) {
    const std::uint32_t number = hex(locationID) >> shift & portMask;
    if (number == 0) break;
    port += fmt::format("{}{}", separator, number);
    separator = '.';
  }
  return port;
}

std::optional<std::uint8_t> HIDDeviceInfo::commandReportID() const {
  std::vector<HIDReportSummary> outputs;
  std::copy_if(
      reports.begin(), reports.end(), std::back_inserter(outputs),
      [](const HIDReportSummary& report) { return report.kind == HIDReportSummary::Kind::output; });
  if (outputs.empty()) return std::nullopt;
  std::stable_sort(outputs.begin(), outputs.end(),
                   [](const auto& a, const auto& b) { return a.byteLength < b.byteLength; });
  auto chosen = std::find_if(outputs.begin(), outputs.end(), isCommandLength);
  if (chosen == outputs.end()) chosen = outputs.begin();
  return checkedByte(chosen->reportID, "a command report ID is above 255");
}

namespace HIDEnumerator {

std::vector<HIDDeviceInfo> devices(std::optional<std::int64_t> vendorID, HIDBackend& backend) {
  std::vector<HIDDeviceInfo> result;
  for (auto& device : backend.devices(vendorID)) result.push_back(info(std::move(device)));
  std::stable_sort(result.begin(), result.end(), [](const auto& a, const auto& b) {
    return std::tie(a.productID, a.locationID, a.usagePage, a.usage) <
           std::tie(b.productID, b.locationID, b.usagePage, b.usage);
  });
  return result;
}

HIDDeviceInfo info(std::shared_ptr<HIDDeviceHandle> device) {
  HIDDeviceInfo info;
  info.vendorID = number(*device, HIDPropertyKey::vendorID);
  info.productID = number(*device, HIDPropertyKey::productID);
  info.locationID = number(*device, HIDPropertyKey::locationID);
  info.usagePage = number(*device, HIDPropertyKey::primaryUsagePage);
  info.usage = number(*device, HIDPropertyKey::primaryUsage);
  info.reportDescriptor =
      HIDReportDescriptor(propertyOr<Bytes>(*device, HIDPropertyKey::reportDescriptor, {}));
  info.reports = info.reportDescriptor.summaries();
  info.id = identityString(info);
  info.product = text(*device, HIDPropertyKey::product);
  info.manufacturer = text(*device, HIDPropertyKey::manufacturer);
  info.serialNumber = text(*device, HIDPropertyKey::serialNumber);
  info.transport = text(*device, HIDPropertyKey::transport);
  info.versionNumber = number(*device, HIDPropertyKey::versionNumber);
  info.maxInputReportSize = number(*device, HIDPropertyKey::maxInputReportSize);
  info.maxOutputReportSize = number(*device, HIDPropertyKey::maxOutputReportSize);
  info.maxFeatureReportSize = number(*device, HIDPropertyKey::maxFeatureReportSize);
  if (info.reports.empty()) info.reports = reportSummaries(*device);
  info.device = std::move(device);
  return info;
}

std::vector<HIDReportSummary> reportSummaries(const HIDDeviceHandle& device) {
  HIDReportTally tally;
  for (const HIDElement& element : device.elements()) {
    if (const auto kind = reportKind(element.type)) {
      tally.add(*kind, element.reportID, element.reportSize, element.reportCount,
                element.usagePage);
    }
  }
  return tally.takeSummaries();
}

}  // namespace HIDEnumerator
}  // namespace quorvane
