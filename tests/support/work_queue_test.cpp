#include "support/work_queue.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "support/semaphore.h"
#include "tests/error_text.h"
#include "tests/support/no_threads.h"

namespace quorvane {
namespace {

// Waits until the queue has run all of its jobs.
void finish(WorkQueue& queue) {
  const auto done = std::make_shared<Semaphore>();
  queue.add([done] { done->signal(); });
  done->wait();
}

// Whether the queue is stopped: then it destroys a job as soon as it is added.
bool isStopped(WorkQueue& queue) {
  const auto token = std::make_shared<int>();
  queue.add([token] { FAIL() << "a job ran after the stop"; });
  return token.use_count() == 1;
}

TEST(WorkQueue, RunsJobsInTheOrderGiven) {
  std::vector<int> ran;
  WorkQueue queue("works");
  for (int i = 0; i < 1000; ++i) {
    queue.add([&ran, i] { ran.push_back(i); });
  }
  finish(queue);
  ASSERT_EQ(ran.size(), 1000U);
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(ran[static_cast<std::size_t>(i)], i);
}

TEST(WorkQueue, RunsJobsOnAThreadOfItsOwn) {
  std::string name;
  std::thread::id thread;
  WorkQueue queue("works");
  queue.add([&] {
    thread = std::this_thread::get_id();
    std::array<char, 64> buffer{};
    pthread_getname_np(pthread_self(), buffer.data(), buffer.size());
    name = buffer.data();
  });
  finish(queue);
  EXPECT_EQ(name, "works");
  EXPECT_NE(thread, std::this_thread::get_id());
}

int threadsNamed(const std::string& name) {
  int count = 0;
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
    std::ifstream file(task.path() / "comm");  // the thread may be gone by now
    std::string line;
    if (std::getline(file, line) && line == name) ++count;
  }
  return count;
}

TEST(WorkQueue, HasAThreadOnlyWhileItHasSomethingToDo) {
  Semaphore started;  // outlives the queue, whose thread signals it
  Semaphore go;
  WorkQueue queue("works");
  EXPECT_EQ(threadsNamed("works"), 0);
  for (int round = 0; round < 3; ++round) {
    queue.add([&] {
      started.signal();
      go.wait();
    });
    started.wait();
    EXPECT_EQ(threadsNamed("works"), 1);
    go.signal();
    while (threadsNamed("works") > 0) std::this_thread::yield();
  }
}

TEST(WorkQueue, AJobWithoutAThreadIsDroppedAndTheNextOnesRun) {
  std::vector<int> ran;
  WorkQueue queue("works");
  {
    const NoThreads none;
    const auto token = std::make_shared<int>();
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(errorText([&] { queue.add([&ran, token] { ran.push_back(-1); }); }), noThreadText);
      EXPECT_EQ(token.use_count(), 1);
    }
  }
  for (int i = 0; i < 2; ++i) {
    queue.add([&ran, i] { ran.push_back(i); });
    finish(queue);
  }
  EXPECT_EQ(ran, (std::vector{0, 1}));
}

TEST(WorkQueue, RunsOneJobAtATime) {
  constexpr int perThread = 1000;
  std::atomic<int> running = 0;
  int ran = 0;
  bool together = false;
  WorkQueue queue("works");
  std::vector<Thread> adders;
  adders.reserve(4);
  for (int i = 0; i < 4; ++i) {
    adders.emplace_back("adds", [&] {
      for (int n = 0; n < perThread; ++n) {
        queue.add([&] {
          if (++running != 1) together = true;
          ++ran;
          --running;
        });
      }
    });
  }
  adders.clear();
  finish(queue);
  EXPECT_EQ(ran, 4 * perThread);
  EXPECT_FALSE(together);
}

TEST(WorkQueue, KeepsTheOrderOfEachThreadThatAdds) {
  constexpr int perThread = 1000;
  std::array<int, 4> next{};
  bool inOrder = true;
  WorkQueue queue("works");
  std::vector<Thread> adders;
  adders.reserve(next.size());
  for (int& mine : next) {
    adders.emplace_back("adds", [&] {
      for (int n = 0; n < perThread; ++n) {
        queue.add([&, n] { inOrder = inOrder && mine++ == n; });
      }
    });
  }
  adders.clear();
  finish(queue);
  EXPECT_TRUE(inOrder);
}

TEST(WorkQueue, AJobThatAJobAddsComesAfterThoseThatWait) {
  std::vector<std::string> ran;
  Semaphore go;
  Semaphore done;
  WorkQueue queue("works");
  queue.add([&] {
    go.wait();
    ran.emplace_back("first");
    queue.add([&] {
      ran.emplace_back("added");
      done.signal();
    });
  });
  queue.add([&] { ran.emplace_back("second"); });
  go.signal();
  done.wait();
  EXPECT_EQ(ran, (std::vector<std::string>{"first", "second", "added"}));
}

TEST(WorkQueue, LetsGoOfAJobBeforeTheNext) {
  auto token = std::make_shared<int>();
  const std::weak_ptr<int> seen = token;
  bool gone = false;
  WorkQueue queue("works");
  queue.add([token = std::move(token)] {});
  queue.add([&] { gone = seen.expired(); });
  finish(queue);
  EXPECT_TRUE(gone);
}

TEST(WorkQueue, AStopWaitsForTheJobThatRunsAndDropsTheOthers) {
  Semaphore started;
  bool finished = false;
  bool dropped = true;
  WorkQueue queue("works");
  queue.add([&] {
    started.signal();
    while (!isStopped(queue)) std::this_thread::yield();
    finished = true;
  });
  queue.add([&] { dropped = false; });
  started.wait();
  queue.stop();
  EXPECT_TRUE(finished);
  EXPECT_TRUE(dropped);
}

TEST(WorkQueue, AStopLetsGoOfTheJobsThatItDrops) {
  const auto token = std::make_shared<int>();
  Semaphore started;
  WorkQueue queue("works");
  queue.add([&] {
    started.signal();
    while (!isStopped(queue)) std::this_thread::yield();
  });
  for (int i = 0; i < 10; ++i) queue.add([token] {});
  started.wait();
  queue.stop();
  EXPECT_EQ(token.use_count(), 1);
}

TEST(WorkQueue, AJobAddedAfterTheStopIsDropped) {
  WorkQueue queue("works");
  queue.stop();
  EXPECT_TRUE(isStopped(queue));
  queue.stop();
  EXPECT_TRUE(isStopped(queue));
}

TEST(WorkQueue, OneWithoutJobsStops) {
  for (int i = 0; i < 100; ++i) WorkQueue queue("works");
}

TEST(WorkQueue, DestructionStops) {
  Semaphore started;
  bool finished = false;
  bool dropped = true;
  {
    WorkQueue queue("works");
    queue.add([&] {
      started.signal();
      while (!isStopped(queue)) std::this_thread::yield();
      finished = true;
    });
    queue.add([&] { dropped = false; });
    started.wait();
  }
  EXPECT_TRUE(finished);
  EXPECT_TRUE(dropped);
}

TEST(WorkQueue, StopsAtAnyMoment) {
  constexpr int rounds = 1000;
  for (int round = 0; round < rounds; ++round) {
    int ran = 0;
    std::optional<WorkQueue> queue(std::in_place, "works");
    const auto job = [&] {
      ++ran;
      queue->add([&] { ++ran; });
    };
    Semaphore progress;
    std::vector<Thread> adders;
    adders.reserve(2);
    for (int i = 0; i < 2; ++i) {
      adders.emplace_back("adds", [&] {
        for (int n = 0; n < 20; ++n) {
          queue->add(job);
          progress.signal();
        }
      });
    }
    for (int n = 0; n < round % 40; ++n) progress.wait();
    queue->stop();
    const int ranUntilTheStop = ran;
    adders.clear();
    queue.reset();
    ASSERT_EQ(ran, ranUntilTheStop);
    ASSERT_LE(ran, 2 * 2 * 20);
  }
}

}  // namespace
}  // namespace quorvane
