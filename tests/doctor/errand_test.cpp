#include "doctor/errand.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(Errand, BringsWhatItFound) {
  Errand<int> errand([] { return 7; });
  EXPECT_EQ(errand.await(Monotonic::time_point::max()), 7);
}

TEST(Errand, IsLeftBehindAtTheDeadlineAndEndsByItself) {
  const auto answer = std::make_shared<Semaphore>();
  const auto ended = std::make_shared<Semaphore>();
  {
    Errand<int> errand([answer, ended] {
      answer->wait();
      ended->signal();
      return 7;
    });
    EXPECT_EQ(errand.await(Monotonic::now()), std::nullopt);
  }
  answer->signal();
  ended->wait();
}

}  // namespace
}  // namespace quorvane
