#include "support/semaphore.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "support/thread.h"

namespace quorvane {
namespace {

using std::chrono::steady_clock;

constexpr steady_clock::time_point longPast = steady_clock::time_point::min();

steady_clock::time_point farFuture() { return steady_clock::now() + std::chrono::hours(24); }

TEST(Semaphore, StartsAtZero) {
  Semaphore semaphore;
  EXPECT_FALSE(semaphore.tryWait());
  EXPECT_FALSE(semaphore.waitUntil(longPast));
}

TEST(Semaphore, GivesEveryCountOnce) {
  Semaphore semaphore;
  for (int i = 0; i < 4; ++i) semaphore.signal();
  EXPECT_TRUE(semaphore.tryWait());
  semaphore.wait();
  EXPECT_TRUE(semaphore.waitUntil(farFuture()));
  EXPECT_TRUE(semaphore.waitUntil(longPast));
  EXPECT_FALSE(semaphore.tryWait());
  EXPECT_FALSE(semaphore.waitUntil(longPast));
}

TEST(Semaphore, ADeadlineThatHasPassedStillTakesACountThatIsThere) {
  Semaphore semaphore;
  semaphore.signal();
  EXPECT_TRUE(semaphore.waitUntil(longPast));
  EXPECT_FALSE(semaphore.waitUntil(longPast));
}

TEST(Semaphore, WakesAThreadThatWaits) {
  Semaphore asked;
  Semaphore answered;
  Thread answering("answering", [&] {
    asked.wait();
    answered.signal();
    if (asked.waitUntil(farFuture())) answered.signal();
  });
  asked.signal();
  answered.wait();
  asked.signal();
  EXPECT_TRUE(answered.waitUntil(farFuture()));
}

TEST(Semaphore, LosesNothingBetweenManyThreads) {
  constexpr int perThread = 2000;
  Semaphore semaphore;
  std::vector<Thread> threads;
  threads.reserve(6);
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back("signals " + std::to_string(i), [&] {
      for (int n = 0; n < perThread; ++n) semaphore.signal();
    });
  }
  for (int i = 0; i < 2; ++i) {
    threads.emplace_back("takes " + std::to_string(i), [&] {
      for (int n = 0; n < perThread; ++n) semaphore.wait();
    });
  }
  for (int n = 0; n < 2 * perThread; ++n) semaphore.wait();
  threads.clear();
  EXPECT_FALSE(semaphore.tryWait());
}

}  // namespace
}  // namespace quorvane
