#pragma once

#include <memory>
#include <vector>

#include "hid/port.h"
#include "simulator/simulated_device.h"
#include "support/mutex.h"

namespace quorvane {

// A backend of simulated devices in place of the machine's own. It lists those that are plugged;
// plugging and unplugging wake its monitors. Must outlive its monitors. Thread-safe.
class SimulatedBackend : public HIDBackend {
 public:
  // Lists the device from now on, while it is plugged.
  void add(const std::shared_ptr<SimulatedDevice>& device);

  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) override;
  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) override;

  // Wakes the monitors, as for a change of a device other than plugging (such as its permissions).
  void reportChange() { events_->report(); }

 private:
  class Monitor;

  // Shared by the devices' plug handlers and the monitors.
  struct Events {
    Mutex lock;
    Condition changed;
    std::uint64_t count QUORVANE_GUARDED_BY(lock) = 0;

    void report();
    std::uint64_t currentCount();
  };

  const std::shared_ptr<Events> events_ = std::make_shared<Events>();
  Mutex lock_;
  std::vector<std::shared_ptr<SimulatedDevice>> devices_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
