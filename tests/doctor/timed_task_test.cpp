#include "doctor/timed_task.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(TimedTask, BringsWhatItFound) {
  TimedTask<int> task([] { return 7; });
  EXPECT_EQ(task.await(Monotonic::time_point::max()), 7);
}

TEST(TimedTask, IsLeftBehindAtTheDeadlineAndEndsByItself) {
  const auto answer = std::make_shared<Semaphore>();
  const auto ended = std::make_shared<Semaphore>();
  {
    TimedTask<int> task([answer, ended] {
      answer->wait();
      ended->signal();
      return 7;
    });
    EXPECT_EQ(task.await(Monotonic::now()), std::nullopt);
  }
  answer->signal();
  ended->wait();
}

}  // namespace
}  // namespace quorvane
