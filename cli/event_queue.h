#pragma once

#include <chrono>
#include <deque>
#include <optional>
#include <utility>

#include "support/event_fd.h"
#include "support/mutex.h"

namespace quorvane {

// A queue of events from any threads to one thread, which also waits for a file descriptor.
template <typename Event>
class EventQueue {
 public:
  void push(Event event) {
    {
      MutexLock held(lock_);
      events_.push_back(std::move(event));
    }
    arrived_.set();
  }

  // Blocks until there is an event. Returns none once the file descriptor `stop` is readable.
  std::optional<Event> next(int stop) {
    constexpr std::chrono::hours never{24};
    return next(stop, never, [] {});
  }

  // The same, and calls `whenQuiet` each time that no event arrives for `limit`, at most 24 hours.
  template <typename WhenQuiet>
  std::optional<Event> next(int stop, std::chrono::milliseconds limit, const WhenQuiet& whenQuiet) {
    for (;;) {
      const auto hasArrived = waitReadable(arrived_.fd(), stop, limit);
      if (!hasArrived) {
        whenQuiet();
        continue;
      }
      if (!*hasArrived) return std::nullopt;
      MutexLock held(lock_);
      if (events_.empty()) {
        arrived_.clear();
        continue;
      }
      Event event = std::move(events_.front());
      events_.pop_front();
      return event;
    }
  }

 private:
  EventFd arrived_;
  Mutex lock_;
  std::deque<Event> events_ QUORVANE_GUARDED_BY(lock_);
};

}  // namespace quorvane
