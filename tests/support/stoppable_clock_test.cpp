#include "support/stoppable_clock.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/thread.h"

namespace quorvane {
namespace {

constexpr Seconds forever{3600};

// Records its calls, and calls a callback during a wait.
class NotingClock final : public Clock {
 public:
  Monotonic::time_point now() override { return Monotonic::time_point(Monotonic::duration(7)); }
  void sleepFor(Seconds duration) override { pauses.push_back(duration); }
  bool wait(Semaphore& semaphore, Seconds timeout) override {
    waits.push_back(timeout);
    if (meanwhile) meanwhile();
    return semaphore.tryWait();
  }

  std::vector<Seconds> pauses;
  std::vector<Seconds> waits;
  std::function<void()> meanwhile;
};

class StoppableClockTest : public testing::Test {
 protected:
  NotingClock inner_;
  StoppableClock clock_{inner_};
  Semaphore semaphore_;
};

TEST_F(StoppableClockTest, IsTheOtherClockUntilItIsStopped) {
  EXPECT_EQ(clock_.now(), inner_.now());
  clock_.sleepFor(Seconds(1.5));
  EXPECT_FALSE(clock_.wait(semaphore_, Seconds(2)));
  semaphore_.signal();
  EXPECT_TRUE(clock_.wait(semaphore_, Seconds(3)));
  EXPECT_EQ(inner_.pauses, std::vector{Seconds(1.5)});
  EXPECT_EQ(inner_.waits, (std::vector{Seconds(2), Seconds(3)}));
}

TEST_F(StoppableClockTest, WaitsForNothingAfterwards) {
  clock_.stop();
  semaphore_.signal();
  EXPECT_FALSE(clock_.wait(semaphore_, forever));
  clock_.sleepFor(forever);
  EXPECT_EQ(inner_.waits, std::vector<Seconds>{});
  EXPECT_EQ(inner_.pauses, std::vector<Seconds>{});
  EXPECT_EQ(clock_.now(), inner_.now());
}

TEST_F(StoppableClockTest, EndsAWaitThatIsUnderWayAsIfTheTimeHadPassed) {
  inner_.meanwhile = [this] { clock_.stop(); };
  EXPECT_FALSE(clock_.wait(semaphore_, forever));
  EXPECT_EQ(inner_.waits, std::vector{forever});
}

TEST_F(StoppableClockTest, AnAnswerThatComesWithTheStopDoesNotCount) {
  inner_.meanwhile = [this] {
    semaphore_.signal();
    clock_.stop();
  };
  EXPECT_FALSE(clock_.wait(semaphore_, forever));
}

TEST_F(StoppableClockTest, ALaterWaitForTheSameSemaphoreIsNotDisturbed) {
  semaphore_.signal();
  EXPECT_TRUE(clock_.wait(semaphore_, forever));
  clock_.stop();
  EXPECT_FALSE(semaphore_.tryWait()) << "signalled though nobody waits";
}

TEST(StoppableClock, WakesAnotherThread) {
  StoppableClock clock(Clock::system());
  Semaphore never;
  Semaphore waiting;
  Thread waiter("waiter", [&] {
    waiting.signal();
    EXPECT_FALSE(clock.wait(never, forever));
  });
  waiting.wait();
  clock.stop();
  waiter.join();
}

TEST(StoppableClock, StopsTwice) {
  StoppableClock clock(Clock::system());
  clock.stop();
  clock.stop();
  Semaphore semaphore;
  EXPECT_FALSE(clock.wait(semaphore, forever));
}

}  // namespace
}  // namespace quorvane
