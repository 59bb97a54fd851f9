#include "support/mutex.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "support/thread.h"

namespace quorvane {
namespace {

class Counter {
 public:
  void add() {
    MutexLock held(mutex_);
    ++value_;
    changed_.notifyAll();
  }

  void waitFor(int value) {
    MutexLock held(mutex_);
    while (value_ < value) changed_.wait(mutex_);
  }

  // Returns whether the wait ended before the deadline.
  bool waitUntil(std::chrono::steady_clock::time_point deadline) {
    MutexLock held(mutex_);
    return changed_.waitUntil(mutex_, deadline);
  }

  int value() {
    MutexLock held(mutex_);
    return value_;
  }

 private:
  Mutex mutex_;
  Condition changed_;
  int value_ QUORVANE_GUARDED_BY(mutex_) = 0;
};

TEST(Mutex, LetsOneThreadInAtATime) {
  constexpr int perThread = 5000;
  Counter counter;
  std::vector<Thread> threads;
  threads.reserve(4);
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back("adds", [&] {
      for (int n = 0; n < perThread; ++n) counter.add();
    });
  }
  threads.clear();
  EXPECT_EQ(counter.value(), 4 * perThread);
}

TEST(Condition, WakesEveryThreadThatWaits) {
  Counter counter;
  std::vector<Thread> threads;
  threads.reserve(4);
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back("waits", [&] { counter.waitFor(3); });
  }
  for (int n = 0; n < 3; ++n) counter.add();
  threads.clear();
  EXPECT_EQ(counter.value(), 3);
}

TEST(Condition, SaysThatADeadlineHasPassedAndKeepsTheMutex) {
  Counter counter;
  EXPECT_FALSE(counter.waitUntil(std::chrono::steady_clock::time_point::min()));
  counter.add();
  EXPECT_EQ(counter.value(), 1);
}

}  // namespace
}  // namespace quorvane
