#pragma once

#include "support/clock.h"

namespace quorvane {

// A clock that stands still, so that nothing times out on a busy machine. Pauses take real time.
class PatientClock final : public Clock {
 public:
  Monotonic::time_point now() override { return {}; }
  void sleepFor(Seconds duration) override { system().sleepFor(duration); }
  bool wait(Semaphore& semaphore, Seconds timeout) override {
    return system().wait(semaphore, timeout);
  }
};

}  // namespace quorvane
