#pragma once

#include <vector>

#include "support/clock.h"
#include "support/mutex.h"

namespace quorvane {

// Another clock, until it is stopped: from then on nobody waits here any more. What is under way
// ends as if the time had passed, so that an owner who has no use for the outcome is rid of it at
// once. Any thread may call.
class StoppableClock final : public Clock {
 public:
  // The other clock outlives this one.
  explicit StoppableClock(Clock& clock) : clock_(clock) {}

  // Ends all waits, now and ever after.
  void stop();

  Monotonic::time_point now() override { return clock_.now(); }

  // A pause that has begun runs to its end.
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
