#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "support/clock.h"
#include "support/mutex.h"
#include "support/semaphore.h"

namespace quorvane {

// A barrier: one thread blocks in pass() until another calls open().
class Gate {
 public:
  void pass() {
    arrived_.signal();
    open_.wait();
  }
  void awaitArrival() { arrived_.wait(); }
  void open() { open_.signal(); }

 private:
  Semaphore arrived_;
  Semaphore open_;
};

// A clock that delegates to a simulated base's clock or, without one, to the machine's with pauses
// that take no time. Calls callbacks at pauses and waits, on the waiting thread.
class EventfulClock final : public Clock {
 public:
  enum class Moment {
    pause,    // at the end of a pause
    request,  // a read has sent its request and begins to wait
    answer,   // the wait of a read has ended, by the answer or the time-out
  };

  void follow(Clock* clock) { clock_ = clock; }

  // Calls `event` at the n-th moment of this kind from now, n from 0.
  void at(Moment moment, int number, std::function<void()> event) {
    MutexLock held(lock_);
    events_.push_back({moment, number, std::move(event)});
  }

  Monotonic::time_point now() override { return clock_ ? clock_->now() : system().now(); }

  void sleepFor(Seconds duration) override {
    if (clock_) clock_->sleepFor(duration);
    reach(Moment::pause);
  }

  bool wait(Semaphore& semaphore, Seconds timeout) override {
    reach(Moment::request);
    const bool woken = (clock_ ? *clock_ : system()).wait(semaphore, timeout);
    reach(Moment::answer);
    return woken;
  }

 private:
  struct Event {
    Moment moment;
    int ahead;  // how many moments of its kind come first
    std::function<void()> what;
  };

  void reach(Moment moment) {
    std::vector<std::function<void()>> due;
    {
      MutexLock held(lock_);
      for (Event& event : events_) {
        if (event.moment == moment && event.ahead-- == 0) due.push_back(event.what);
      }
    }
    for (const auto& what : due) what();
  }

  Clock* clock_ = nullptr;
  Mutex lock_;
  std::vector<Event> events_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
