#pragma once

#include <chrono>

#include "support/mutex.h"

namespace quorvane {

// A counting semaphore that starts at 0. Any thread may signal and wait. The semaphore must stay
// alive until signal() has returned.
class Semaphore {
 public:
  void signal() {
    {
      MutexLock held(mutex_);
      ++count_;
    }
    condition_.notifyOne();
  }

  void wait() {
    MutexLock held(mutex_);
    while (count_ == 0) condition_.wait(mutex_);
    --count_;
  }

  // Takes one count, waiting until the deadline at most; false on timeout.
  bool waitUntil(std::chrono::steady_clock::time_point deadline) {
    MutexLock held(mutex_);
    while (count_ == 0) {
      if (!condition_.waitUntil(mutex_, deadline)) break;
    }
    if (count_ == 0) return false;
    --count_;
    return true;
  }

  // Takes one count without waiting; false when there is none.
  bool tryWait() {
    MutexLock held(mutex_);
    if (count_ == 0) return false;
    --count_;
    return true;
  }

 private:
  Mutex mutex_;
  Condition condition_;
  int count_ QUORVANE_GUARDED_BY(mutex_) = 0;
};

}  // namespace quorvane
