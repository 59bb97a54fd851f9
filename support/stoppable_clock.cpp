#include "support/stoppable_clock.h"

#include <algorithm>

namespace quorvane {

// The semaphores stay alive while the lock is held: each waiter unregisters in endWait() first.
void StoppableClock::stop() {
  MutexLock held(lock_);
  stopped_ = true;
  for (Semaphore* const semaphore : awaited_) semaphore->signal();
}

void StoppableClock::sleepFor(Seconds duration) {
  {
    MutexLock held(lock_);
    if (stopped_) return;
  }
  clock_.sleepFor(duration);
}

bool StoppableClock::wait(Semaphore& semaphore, Seconds timeout) {
  if (!beginWait(semaphore)) return false;
  const bool woken = clock_.wait(semaphore, timeout);
  return endWait(semaphore) && woken;
}

// Both return false once the clock is stopped.
bool StoppableClock::beginWait(Semaphore& semaphore) {
  MutexLock held(lock_);
  if (!stopped_) awaited_.push_back(&semaphore);
  return !stopped_;
}

bool StoppableClock::endWait(Semaphore& semaphore) {
  MutexLock held(lock_);
  awaited_.erase(std::find(awaited_.begin(), awaited_.end(), &semaphore));
  return !stopped_;
}

}  // namespace quorvane
