#include "simulator/simulated_backend.h"

#include <utility>

namespace quorvane {

void SimulatedBackend::Events::report() {
  MutexLock held(lock);
  ++count;
  changed.notifyAll();
}

std::uint64_t SimulatedBackend::Events::currentCount() {
  MutexLock held(lock);
  return count;
}

class SimulatedBackend::Monitor final : public HIDMonitor {
 public:
  explicit Monitor(std::shared_ptr<Events> events)
      : events_(std::move(events)), seen_(events_->currentCount()) {}

  bool waitForEvent() override {
    MutexLock held(events_->lock);
    while (!interrupted_ && events_->count == seen_) events_->changed.wait(events_->lock);
    if (interrupted_) return false;
    ++seen_;
    return true;
  }

  void interrupt() override {
    MutexLock held(events_->lock);
    interrupted_ = true;
    events_->changed.notifyAll();
  }

 private:
  const std::shared_ptr<Events> events_;
  std::uint64_t seen_;
  bool interrupted_ = false;  // guarded by events_->lock
};

void SimulatedBackend::add(const std::shared_ptr<SimulatedDevice>& device) {
  device->setOnPlugChange([events = events_] { events->report(); });
  {
    MutexLock held(lock_);
    devices_.push_back(device);
  }
  events_->report();
}

std::vector<std::shared_ptr<HIDDeviceHandle>> SimulatedBackend::devices(
    std::optional<std::int64_t> vendorID) {
  std::vector<std::shared_ptr<SimulatedDevice>> all;
  {
    MutexLock held(lock_);
    all = devices_;
  }
  std::vector<std::shared_ptr<HIDDeviceHandle>> result;
  for (const auto& device : all) {
    const auto vendor = device->property(HIDPropertyKey::vendorID);
    const bool matches = !vendorID || (vendor && *vendor == HIDProperty(*vendorID));
    if (matches && device->isPlugged()) result.push_back(device);
  }
  return result;
}

std::unique_ptr<HIDMonitor> SimulatedBackend::monitor(std::optional<std::int64_t> /*vendorID*/) {
  return std::make_unique<Monitor>(events_);
}

}  // namespace quorvane
