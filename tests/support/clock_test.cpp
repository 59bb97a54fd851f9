#include "support/clock.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>

#include "support/thread.h"

namespace quorvane {
namespace {

TEST(SystemClock, IsOneAndTheSame) { EXPECT_EQ(&Clock::system(), &Clock::system()); }

TEST(SystemClock, NeverRunsBackwards) {
  Clock& clock = Clock::system();
  auto last = clock.now();
  for (int i = 0; i < 1000; ++i) {
    const auto now = clock.now();
    ASSERT_GE(now, last);
    last = now;
  }
}

TEST(SystemClock, APauseOfNothingReturns) {
  Clock::system().sleepFor(Seconds::zero());
  Clock::system().sleepFor(Seconds(-1));
}

TEST(SystemClock, ATimeoutOfNothingTakesACountThatIsThere) {
  for (const Seconds timeout : {Seconds::zero(), Seconds(-0.0), Seconds(-1), Seconds::min()}) {
    Semaphore semaphore;
    EXPECT_FALSE(Clock::system().wait(semaphore, timeout));
    semaphore.signal();
    EXPECT_TRUE(Clock::system().wait(semaphore, timeout));
    EXPECT_FALSE(Clock::system().wait(semaphore, timeout));
  }
}

TEST(SystemClock, ATimeoutPasses) {
  Semaphore semaphore;
  EXPECT_FALSE(Clock::system().wait(semaphore, Seconds(1e-6)));
}

TEST(SystemClock, AWaitEndsWithTheSignal) {
  for (const Seconds timeout :
       {Seconds(3600), Seconds::max(), Seconds(std::numeric_limits<double>::infinity())}) {
    Semaphore started;
    Semaphore semaphore;
    bool taken = false;
    Thread waiting("waiting", [&] {
      started.signal();
      taken = Clock::system().wait(semaphore, timeout);
    });
    started.wait();
    // Yields, so that the wait very probably begins before the signal.
    for (int i = 0; i < 1000; ++i) std::this_thread::yield();
    semaphore.signal();
    waiting.join();
    EXPECT_TRUE(taken) << timeout.count();
  }
}

}  // namespace
}  // namespace quorvane
