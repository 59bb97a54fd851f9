#pragma once

#include <memory>
#include <vector>

#include "hid/usb_reset.h"
#include "simulator/simulated_device.h"

namespace quorvane {

// A USB bus that lists simulated bases while they are plugged. A reset unplugs the base and plugs
// it back in. The bases must outlive the bus and the devices that it lists.
class SimulatedUSBBus final : public USBBus {
 public:
  SimulatedUSBBus() = default;
  explicit SimulatedUSBBus(SimulatedDevice& device) : devices_{&device} {}

  // Not thread-safe: add all devices before the bus is used.
  void add(SimulatedDevice& device) { devices_.push_back(&device); }

  std::vector<std::unique_ptr<USBDevice>> devices() override;

 private:
  std::vector<SimulatedDevice*> devices_;
};

}  // namespace quorvane
