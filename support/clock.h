#pragma once

#include <chrono>

#include "support/semaphore.h"

namespace quorvane {

using Monotonic = std::chrono::steady_clock;
using WallClock = std::chrono::system_clock;

// Time-outs and pauses as the protocol states them.
using Seconds = std::chrono::duration<double>;

// Where the pauses and deadlines of the device dialogue go, so that tests can let time pass without
// waiting. All operations block the calling thread and may be used from any thread.
class Clock {
 public:
  virtual ~Clock() = default;

  virtual Monotonic::time_point now() = 0;
  virtual void sleepFor(Seconds duration) = 0;

  // Takes one count of the semaphore, waiting at most `timeout`; false when it passed. A timeout of
  // zero or less takes a count that is already there.
  virtual bool wait(Semaphore& semaphore, Seconds timeout) = 0;

  // The machine's own clock.
  static Clock& system();
};

}  // namespace quorvane
