#include "support/clock.h"

#include <algorithm>
#include <thread>

namespace quorvane {
namespace {

// Upper limit of a timeout, so that the deadline does not overflow the clock's range.
constexpr Seconds longestWait = std::chrono::hours(24 * 365);

class SystemClock final : public Clock {
 public:
  Monotonic::time_point now() override { return Monotonic::now(); }

  void sleepFor(Seconds duration) override { std::this_thread::sleep_for(duration); }

  bool wait(Semaphore& semaphore, Seconds timeout) override {
    if (timeout <= Seconds::zero()) return semaphore.tryWait();
    const Seconds bounded = std::min(timeout, longestWait);
    return semaphore.waitUntil(Monotonic::now() +
                               std::chrono::duration_cast<Monotonic::duration>(bounded));
  }
};

}  // namespace

Clock& Clock::system() {
  static SystemClock clock;
  return clock;
}

}  // namespace quorvane
