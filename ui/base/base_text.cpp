#include "ui/base/base_text.h"

#include <fmt/format.h>

#include "support/text.h"

namespace quorvane {

std::string nameOf(const HIDDeviceInfo& base) { return oneLine(base.displayName()); }

std::string detailOf(const HIDDeviceInfo& base) {
  std::string detail = fmt::format("Product ID 0x{:04x}", base.productID);
  const auto add = [&](const char* what, const std::string& value) {
    if (!value.empty()) detail += fmt::format(", {}{}", what, oneLine(value));
  };
  add("serial number ", base.serialNumber);
  add("", base.device->node());
  add("USB port ", base.usbPort());
  return detail;
}

std::string switchQuestion(const HIDDeviceInfo& other) {
  return fmt::format("Connect {} instead?", nameOf(other));
}

std::string switchCost(std::size_t unsaved, const std::string& connected) {
  return fmt::format("{} for {} will be discarded.", counted(unsaved, "unsaved change"),
                     oneLine(connected));
}

}  // namespace quorvane
