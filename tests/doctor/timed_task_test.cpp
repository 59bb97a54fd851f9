#include "doctor/timed_task.h"

#include <gtest/gtest.h>

#include <optional>

namespace quorvane {
namespace {

constexpr Seconds longLimit{60};

TEST(TimedTask, BringsTheLatestOfWhatItFound) {
  TimedTask<int> task(longLimit, 0, [](const auto& publish) {
    publish(6);
    publish(7);
  });
  EXPECT_EQ(task.await(), 7);
}

TEST(TimedTask, BringsWhatItFoundBeforeACallThatBlocks) {
  const auto answer = std::make_shared<Semaphore>();
  const auto asked = std::make_shared<Semaphore>();
  const auto ended = std::make_shared<Semaphore>();
  TimedTask<int> task(Seconds(0), 0, [answer, asked, ended](const auto& publish) {
    publish(6);
    asked->signal();
    answer->wait();
    publish(7);
    ended->signal();
  });
  asked->wait();
  EXPECT_EQ(task.await(), 6);
  answer->signal();
  ended->wait();
}

TEST(TimedTask, BringsWhatItFound) {
  TimedTask<std::optional<int>> task(longLimit, {}, [](const auto& publish) { publish(7); });
  EXPECT_EQ(task.await(), 7);
}

TEST(TimedTask, IsLeftBehindAtTheDeadlineAndEndsByItself) {
  const auto answer = std::make_shared<Semaphore>();
  const auto ended = std::make_shared<Semaphore>();
  {
    TimedTask<std::optional<int>> task(Seconds(0), {}, [answer, ended](const auto& publish) {
      answer->wait();
      publish(7);
      ended->signal();
    });
    EXPECT_EQ(task.await(), std::nullopt);
  }
  answer->signal();
  ended->wait();
}

}  // namespace
}  // namespace quorvane
