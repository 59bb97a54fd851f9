#pragma once

#include <memory>
#include <vector>

#include "hid/port.h"
#include "simulator/simulated_device.h"
#include "support/mutex.h"

namespace quorvane {

// Simulated devices in place of the machine's own: those that are plugged are listed, and plugging
// and unplugging reach its monitors. Outlives its monitors. Any thread may call.
class SimulatedBackend final : public HIDBackend {
 public:
  // From now on the device is listed while it is plugged.
  void add(const std::shared_ptr<SimulatedDevice>& device);

  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) override;
  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) override;

  // Tells the monitors that something about a device is different, such as who may open it.
  void reportChange() { events_->report(); }

  // Whether monitors can be had; without, as on a system that cannot watch.
  void setCanWatch(bool canWatch);

 private:
  class Monitor;

  // What the devices' plug handlers and the monitors share.
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
  bool canWatch_ QUORVANE_GUARDED_BY(lock_) = true;
};

}  // namespace quorvane
