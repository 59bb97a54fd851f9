#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "support/clock.h"
#include "support/mutex.h"
#include "support/semaphore.h"

namespace quorvane {

// Where one thread stops until another lets it go on.
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

// A clock that follows another: a simulated base's or, without one, the machine's own with pauses
// that take no time. Things may happen while somebody waits, on the thread that waits.
class EventfulClock final : public Clock {
 public:
  enum class Moment {
    pause,    // at the end of a pause
    request,  // a read has asked, and begins to wait
    answer,   // a read has its answer, or none in time
  };

  void follow(Clock* clock) { clock_ = clock; }

  // Calls `event` at the moment with this number, counted from 0 and from now.
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
    int ahead;  // moments of its kind that come before
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
