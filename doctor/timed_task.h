#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "support/clock.h"
#include "support/mutex.h"
#include "support/semaphore.h"
#include "support/thread.h"

namespace quorvane {

// Finds something out on a thread of its own, which is left behind when that takes too long: a file
// system that does not answer holds up whoever asks it.
template <typename Found>
class TimedTask {
 public:
  // `find` owns all that it touches, and does not throw. Throws std::system_error when no thread is
  // to be had.
  explicit TimedTask(std::function<Found()> find) : shared_(std::make_shared<Shared>()) {
    shared_->thread = Thread("quorvane.doctor", [shared = shared_, find = std::move(find)] {
      Found found = find();
      {
        MutexLock held(shared->lock);
        shared->found = std::move(found);
      }
      shared->done.signal();
    });
  }

  // Nothing when it is still under way at the deadline. Once.
  std::optional<Found> await(Monotonic::time_point deadline) {
    if (!shared_->done.waitUntil(deadline)) return std::nullopt;
    shared_->thread.join();
    MutexLock held(shared_->lock);
    return std::move(shared_->found);
  }

 private:
  // Held by the thread as well, which is the last to let go when it was left behind.
  struct Shared {
    Mutex lock;
    std::optional<Found> found QUORVANE_GUARDED_BY(lock);
    Semaphore done;
    Thread thread;
  };

  const std::shared_ptr<Shared> shared_;
};

}  // namespace quorvane
