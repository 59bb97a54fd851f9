#pragma once

#include <memory>
#include <vector>

#include "hid/usb_reset.h"
#include "simulator/simulated_device.h"

namespace quorvane {

// The USB side of a simulated base: a bus with that one device on it, while it is plugged. A reset
// unplugs the base and plugs it back in. The device must outlive the bus and what it lists.
class SimulatedUSBBus final : public USBBus {
 public:
  explicit SimulatedUSBBus(SimulatedDevice& device) : device_(device) {}

  std::vector<std::unique_ptr<USBDevice>> devices() override;

 private:
  SimulatedDevice& device_;
};

}  // namespace quorvane
