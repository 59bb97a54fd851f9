#pragma once

#include <chrono>

#include "support/semaphore.h"

namespace quorvane {

using Monotonic = std::chrono::steady_clock;
using WallClock = std::chrono::system_clock;

// For timeouts and pauses of the protocol.
using Seconds = std::chrono::duration<double>;

// The source of time for all pauses and deadlines. Tests replace it to let time pass without
// waiting. sleepFor() and wait() block the calling thread. Thread-safe.
class Clock {
 public:
  virtual ~Clock() = default;

  virtual Monotonic::time_point now() = 0;
  virtual void sleepFor(Seconds duration) = 0;

  // Takes one count of the semaphore, waiting at most `timeout`; false on timeout. With a timeout
  // of zero or less it does not wait.
  virtual bool wait(Semaphore& semaphore, Seconds timeout) = 0;

  // The machine's own clock.
  static Clock& system();
};

}  // namespace quorvane
