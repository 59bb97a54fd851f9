#include "hid/usb_reset.h"

#include <fmt/format.h>

#include "protocol/error.h"

namespace quorvane::USBReset {

std::int64_t reset(std::int64_t vendorID, std::optional<std::int64_t> productID, USBBus& bus) {
  for (const auto& device : bus.devices()) {
    if (device->vendorID() != vendorID) continue;
    if (productID && device->productID() != productID) continue;
    const std::int64_t location = device->locationID().value_or(0);
    device->reset();
    return location;
  }
  throw FanatecError::ioFailed(
      fmt::format("no USB device with vendor 0x{:x} found", static_cast<std::uint32_t>(vendorID)));
}

}  // namespace quorvane::USBReset
