#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hid/port.h"
#include "hid/report_descriptor.h"
#include "hid/report_summary.h"
#include "protocol/product.h"

namespace quorvane {

// The description of one HID device. An immutable value; may be shared between threads.
struct HIDDeviceInfo {
  // "%04x:%04x@%08x/%x:%x" of vendor, product, location, primary usage page and usage. The key of
  // the device throughout the program; it changes when the device is plugged into another port.
  std::string id;
  std::int64_t vendorID = 0;
  std::int64_t productID = 0;
  std::string product;
  std::string manufacturer;
  std::string serialNumber;
  std::string transport;
  std::int64_t locationID = 0;
  std::int64_t usagePage = 0;
  std::int64_t usage = 0;
  std::int64_t versionNumber = 0;
  std::int64_t maxInputReportSize = 0;  // bytes, including the report ID
  std::int64_t maxOutputReportSize = 0;
  std::int64_t maxFeatureReportSize = 0;
  std::vector<HIDReportSummary> reports;
  HIDReportDescriptor reportDescriptor;
  std::shared_ptr<HIDDeviceHandle> device;

  bool isFanatec() const { return vendorID == Fanatec::vendorID; }

  // The catalogue row for the product ID, whatever the vendor.
  std::optional<FanatecProduct> knownProduct() const { return FanatecProduct::lookup(productID); }

  // The catalogue's name, else the device's own, else "VVVV:PPPP".
  std::string displayName() const;

  // The USB port as the kernel writes it: "3-1.4" is bus 3, port 1, and port 4 of the hub there.
  // Empty for a device that is not on a USB bus.
  std::string usbPort() const;

  // The ID of the output report for short commands: the first report of 7 bytes, else of 8, else
  // the shortest. None without output reports. An ID above 255 ends the program.
  std::optional<std::uint8_t> commandReportID() const;
};

namespace HIDEnumerator {

// The attached devices of a vendor (or of all), ordered by product, location, usage page and usage.
// Only reads properties; opens no device. A missing property gives 0 or an empty value.
std::vector<HIDDeviceInfo> devices(std::optional<std::int64_t> vendorID,
                                   HIDBackend& backend = HIDBackend::system());

HIDDeviceInfo info(std::shared_ptr<HIDDeviceHandle> device);

// Summaries from the device's element list, for devices whose descriptor has none.
std::vector<HIDReportSummary> reportSummaries(const HIDDeviceHandle& device);

}  // namespace HIDEnumerator
}  // namespace quorvane
