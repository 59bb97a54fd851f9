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

// Runs a function on its own thread and waits for the result until a deadline. After the deadline
// the thread is left running: a call to a file system that does not answer cannot be cancelled.
template <typename Found>
class TimedTask {
 public:
  // `find` must own everything that it uses, and must not throw. Throws std::system_error when no
  // thread can be started.
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

  // The result; none if there is none by the deadline. Call it only once.
  std::optional<Found> await(Monotonic::time_point deadline) {
    if (!shared_->done.waitUntil(deadline)) return std::nullopt;
    shared_->thread.join();
    MutexLock held(shared_->lock);
    return std::move(shared_->found);
  }

 private:
  // Also owned by the thread, which may outlive the task.
  struct Shared {
    Mutex lock;
    std::optional<Found> found QUORVANE_GUARDED_BY(lock);
    Semaphore done;
    Thread thread;
  };

  const std::shared_ptr<Shared> shared_;
};

}  // namespace quorvane
