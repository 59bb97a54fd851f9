#pragma once

#include <atomic>
#include <memory>

#include "simulator/simulated_backend.h"

namespace quorvane {

// A backend of simulated devices on a system that may be unable to watch devices.
class FaultyBackend final : public SimulatedBackend {
 public:
  // With false, monitor() returns null.
  void setCanWatch(bool canWatch) { canWatch_ = canWatch; }

  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) override {
    return canWatch_ ? SimulatedBackend::monitor(vendorID) : nullptr;
  }

 private:
  std::atomic<bool> canWatch_ = true;
};

}  // namespace quorvane
