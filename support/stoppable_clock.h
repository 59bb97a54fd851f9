#pragma once

#include <vector>

#include "support/clock.h"
#include "support/mutex.h"

namespace quorvane {

// Forwards to another clock until it is stopped. From then on every wait, running or new, returns
// at once as if it had timed out. For an owner that no longer needs the result of an operation.
// Thread-safe.
class StoppableClock final : public Clock {
 public:
  // The other clock must outlive this one.
  explicit StoppableClock(Clock& clock) : clock_(clock) {}

  // Cancels all waits, for good.
  void stop();

  Monotonic::time_point now() override { return clock_.now(); }

  // stop() does not shorten a pause that has begun.
  void sleepFor(Seconds duration) override;
  bool wait(Semaphore& semaphore, Seconds timeout) override;

 private:
  bool beginWait(Semaphore& semaphore);
  bool endWait(Semaphore& semaphore);

  Clock& clock_;
  Mutex lock_;
  bool stopped_ QUORVANE_GUARDED_BY(lock_) = false;
  std::vector<Semaphore*> awaited_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
