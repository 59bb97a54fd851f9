#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "support/clock.h"
#include "support/mutex.h"
#include "support/semaphore.h"
#include "support/thread.h"

namespace quorvane {

// Runs a function on its own thread and waits for it until a deadline. After the deadline the
// thread is left running: a call to a device or file system that does not answer cannot be
// cancelled.
//
// The deadline is in machine time, because it limits calls that block in the kernel. A simulated
// clock would pass it before the thread gets any processor time.
template <typename Found>
class TimedTask {
 public:
  // Replaces the result. Called by the function, on its thread, any number of times.
  using Publish = std::function<void(Found)>;

  // `find` must own everything that it uses, and must not throw. `initial` is the result until it
  // publishes another one. The limit counts from now. Throws std::system_error when no thread can
  // be started.
  TimedTask(Seconds limit, Found initial, std::function<void(const Publish&)> find)
      : deadline_(Monotonic::now() + std::chrono::duration_cast<Monotonic::duration>(limit)),
        shared_(std::make_shared<Shared>(std::move(initial))) {
    shared_->thread = Thread("quorvane.doctor", [shared = shared_, find = std::move(find)] {
      find([&](Found found) {
        MutexLock held(shared->lock);
        shared->found = std::move(found);
      });
      shared->done.signal();
    });
  }

  // The result when the function ended or the limit passed. Call it only once.
  Found await() {
    if (shared_->done.waitUntil(deadline_)) shared_->thread.join();
    MutexLock held(shared_->lock);
    return std::move(shared_->found);
  }

 private:
  // Also owned by the thread, which may outlive the task.
  struct Shared {
    explicit Shared(Found initial) : found(std::move(initial)) {}

    Mutex lock;
    Found found QUORVANE_GUARDED_BY(lock);
    Semaphore done;
    Thread thread;
  };

  const Monotonic::time_point deadline_;
  const std::shared_ptr<Shared> shared_;
};

}  // namespace quorvane
