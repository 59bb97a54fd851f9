#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace quorvane {

// One device on the USB bus. Unknown IDs are none.
class USBDevice {
 public:
  virtual ~USBDevice() = default;

  virtual std::optional<std::int64_t> vendorID() const = 0;
  virtual std::optional<std::int64_t> productID() const = 0;
  virtual std::optional<std::int64_t> locationID() const = 0;

  // Resets the device's port. Blocks for the duration of the request (about 0.3 s). Throws
  // std::system_error.
  virtual void reset() = 0;
};

// Enumerates USB devices.
class USBBus {
 public:
  virtual ~USBBus() = default;

  // All devices, in the order of the bus. Throws FanatecError ioFailed when enumeration fails.
  virtual std::vector<std::unique_ptr<USBDevice>> devices() = 0;

  // This machine's devices.
  static USBBus& system();
};

namespace USBReset {

// Resets the first USB device of the vendor (and, when given, the product), like unplugging and
// replugging it. Blocks for the request, but does not wait until the device is back. Returns its
// location ID, 0 when unknown. Throws FanatecError ioFailed when there is no such device, and
// passes on the std::system_error of USBDevice::reset().
std::int64_t reset(std::int64_t vendorID, std::optional<std::int64_t> productID,
                   USBBus& bus = USBBus::system());

}  // namespace USBReset
}  // namespace quorvane
