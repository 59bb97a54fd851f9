#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace quorvane {

// One device on the USB bus. Facts that the bus does not give are absent.
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

// Where USB devices come from.
class USBBus {
 public:
  virtual ~USBBus() = default;

  // All devices in the bus's own order. Throws FanatecError ioFailed when the bus cannot be walked.
  virtual std::vector<std::unique_ptr<USBDevice>> devices() = 0;

  // This machine's devices.
  static USBBus& system();
};

namespace USBReset {

// Resets the first USB device of the vendor (and, when given, the product), as if its cable had
// been pulled and put back. Returns its location ID (0 when unknown) without awaiting the return of
// the device; blocks for the request itself. Throws FanatecError ioFailed when there is no such
// device, or the device's std::system_error unchanged.
std::int64_t reset(std::int64_t vendorID, std::optional<std::int64_t> productID,
                   USBBus& bus = USBBus::system());

}  // namespace USBReset
}  // namespace quorvane
