#pragma once

#include "support/clock.h"

namespace quorvane {

// Pauses are real, and no time passes: nothing times out on a busy machine.
class PatientClock final : public Clock {
 public:
  Monotonic::time_point now() override { return {}; }
  void sleepFor(Seconds duration) override { system().sleepFor(duration); }
  bool wait(Semaphore& semaphore, Seconds timeout) override {
    return system().wait(semaphore, timeout);
  }
};

}  // namespace quorvane
