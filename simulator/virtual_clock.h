#pragma once

#include <fmt/format.h>

#include <algorithm>

#include "simulator/simulated_device.h"

namespace quorvane {

// The clock of a device in simulated time; it never sleeps. sleepFor() adds a line to the
// transcript; wait() jumps to the next event once all readers have handled their reports.
class SimulatedDevice::VirtualClock final : public Clock {
 public:
  explicit VirtualClock(SimulatedDevice& device) : device_(device) {}

  Monotonic::time_point now() override {
    MutexLock held(device_.lock_);
    return device_.virtualNow_;
  }

  void sleepFor(Seconds duration) override {
    device_.transcript_.add(fmt::format("pause {:g} ms", duration.count() * 1000));
    {
      MutexLock held(device_.lock_);
      device_.virtualNow_ += std::chrono::duration_cast<Monotonic::duration>(duration);
      device_.changed_.notifyAll();
    }
    device_.waitUntilQuiet();  // reports of the pause are handled when it ends
  }

  bool wait(Semaphore& semaphore, Seconds timeout) override {
    const auto deadline = now() + std::chrono::duration_cast<Monotonic::duration>(timeout);
    for (;;) {
      device_.waitUntilQuiet();
      if (semaphore.tryWait()) return true;
      MutexLock held(device_.lock_);
      const auto due = device_.base_.nextDue(device_.virtualNow_);
      if (device_.virtualNow_ >= deadline) return false;
      // Never set the time back: another thread may have advanced it.
      device_.virtualNow_ =
          std::max(device_.virtualNow_, due ? std::min(*due, deadline) : deadline);
      device_.changed_.notifyAll();
    }
  }

 private:
  SimulatedDevice& device_;
};

}  // namespace quorvane
