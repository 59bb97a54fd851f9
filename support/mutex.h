#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "support/thread_annotations.h"

namespace quorvane {

// std::mutex with thread-safety annotations.
class QUORVANE_CAPABILITY("mutex") Mutex {
 public:
  void lock() QUORVANE_ACQUIRE() { mutex_.lock(); }
  void unlock() QUORVANE_RELEASE() { mutex_.unlock(); }

 private:
  friend class Condition;
  std::mutex mutex_;
};

class QUORVANE_SCOPED_CAPABILITY MutexLock {
 public:
  explicit MutexLock(Mutex& mutex) QUORVANE_ACQUIRE(mutex) : mutex_(mutex) { mutex_.lock(); }
  ~MutexLock() QUORVANE_RELEASE() { mutex_.unlock(); }
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

 private:
  Mutex& mutex_;
};

// A condition variable for Mutex. Spurious wake-ups happen: callers must wait in a loop.
class Condition {
 public:
  void wait(Mutex& mutex) QUORVANE_REQUIRES(mutex) {
    std::unique_lock<std::mutex> held(mutex.mutex_, std::adopt_lock);
    condition_.wait(held);
    held.release();
  }

  // False once the (monotonic) deadline has passed.
  bool waitUntil(Mutex& mutex, std::chrono::steady_clock::time_point deadline)
      QUORVANE_REQUIRES(mutex) {
    std::unique_lock<std::mutex> held(mutex.mutex_, std::adopt_lock);
    const std::cv_status status = condition_.wait_until(held, deadline);
    held.release();
    return status == std::cv_status::no_timeout;
  }

  void notifyOne() { condition_.notify_one(); }
  void notifyAll() { condition_.notify_all(); }

 private:
  std::condition_variable condition_;
};

}  // namespace quorvane
