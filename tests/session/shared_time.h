#pragma once

#include <algorithm>
#include <set>

#include "simulator/simulated_device.h"
#include "support/clock.h"
#include "support/mutex.h"

namespace quorvane {

// The simulated clock of several threads, each with a session on the same device. It stands still
// while a thread works or waits for an answer. Once all threads are in a pause, it jumps to the
// earliest end of a pause. The threads interleave as in real time, but no test waits.
class SharedTime final : public Clock {
 public:
  // The device must use real time and outlive this.
  SharedTime(SimulatedDevice& device, std::size_t threads) : device_(device), threads_(threads) {}

  // To be called when one of the threads stops using the clock.
  void leave() {
    MutexLock held(lock_);
    --threads_;
    jump();
  }

  Monotonic::time_point now() override {
    MutexLock held(lock_);
    return now_;
  }

  void sleepFor(Seconds duration) override {
    // As in a real pause, the readers handle their reports.
    device_.waitUntilQuiet();
    MutexLock held(lock_);
    const auto end = now_ + std::chrono::duration_cast<Monotonic::duration>(duration);
    const auto pause = pauses_.insert(end);
    jump();
    while (now_ < end) changed_.wait(lock_);
    pauses_.erase(pause);
  }

  // Waits in real time, since the base answers at once.
  bool wait(Semaphore& semaphore, Seconds /*timeout*/) override {
    return system().wait(semaphore, Seconds(3600));
  }

 private:
  void jump() QUORVANE_REQUIRES(lock_) {
    if (pauses_.empty() || pauses_.size() < threads_) return;
    now_ = std::max(now_, *pauses_.begin());
    changed_.notifyAll();
  }

  SimulatedDevice& device_;
  Mutex lock_;
  Condition changed_;
  std::size_t threads_ QUORVANE_GUARDED_BY(lock_);
  Monotonic::time_point now_ QUORVANE_GUARDED_BY(lock_);
  std::multiset<Monotonic::time_point> pauses_ QUORVANE_GUARDED_BY(lock_);  // their ends
};

}  // namespace quorvane
