#pragma once

#include <algorithm>
#include <set>

#include "simulator/simulated_device.h"
#include "support/clock.h"
#include "support/mutex.h"

namespace quorvane {

// The time of several threads, each with a session on one device. It stands still while one of them
// is at work or waits for an answer, and jumps to the end of the shortest pause once all of them
// are in one: so they run into each other as they would in real time, without any of it passing.
class SharedTime final : public Clock {
 public:
  // The device is in real time, and outlives this.
  SharedTime(SimulatedDevice& device, std::size_t threads) : device_(device), threads_(threads) {}

  // One of the threads uses it no more.
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
    // In a real pause, the readers handle what they got.
    device_.waitUntilQuiet();
    MutexLock held(lock_);
    const auto end = now_ + std::chrono::duration_cast<Monotonic::duration>(duration);
    const auto pause = pauses_.insert(end);
    jump();
    while (now_ < end) changed_.wait(lock_);
    pauses_.erase(pause);
  }

  // The base answers at once.
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
