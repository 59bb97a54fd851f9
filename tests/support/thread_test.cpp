#include "support/thread.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/semaphore.h"
#include "tests/error_text.h"
#include "tests/support/no_threads.h"

namespace quorvane {
namespace {

std::string kernelName() {
  std::array<char, 64> name{};
  pthread_getname_np(pthread_self(), name.data(), name.size());
  return name.data();
}

TEST(Thread, OneWithoutABodyHasNothingToJoin) {
  Thread thread;
  EXPECT_EQ(thread.name(), "");
  EXPECT_FALSE(thread.joinable());
  thread.join();
  EXPECT_FALSE(thread.joinable());
}

TEST(Thread, KeepsItsNameAndShowsTheKernelTheFirstFifteenBytes) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"hid reader", "hid reader"},
      {"fifteen letters", "fifteen letters"},
      {"sixteen letters!", "sixteen letters"},
      {"quorvane reader 0eb7:0020@03140000", "quorvane reader"},
  };
  for (const auto& [name, shown] : cases) {
    std::string seen;
    Thread thread(name, [&seen] { seen = kernelName(); });
    EXPECT_EQ(thread.name(), name);
    thread.join();
    EXPECT_EQ(seen, shown);
    EXPECT_EQ(thread.name(), name);
  }
}

TEST(Thread, JoinWaitsForTheBodyOnce) {
  bool ended = false;
  Semaphore go;
  Thread thread("body", [&] {
    go.wait();
    ended = true;
  });
  EXPECT_TRUE(thread.joinable());
  go.signal();
  thread.join();
  EXPECT_TRUE(ended);
  EXPECT_FALSE(thread.joinable());
  thread.join();
}

TEST(Thread, ItsOwnerWaitsForTheBodyWhenItLetsGo) {
  bool ended = false;
  {
    Semaphore go;
    const Thread thread("body", [&] {
      go.wait();
      ended = true;
    });
    go.signal();
  }
  EXPECT_TRUE(ended);
}

TEST(Thread, MovesToAnotherOwner) {
  Semaphore go;
  Thread first("body", [&] { go.wait(); });
  Thread second(std::move(first));
  EXPECT_TRUE(second.joinable());
  EXPECT_EQ(second.name(), "body");
  go.signal();
}

TEST(Thread, ANewBodyWaitsForTheOldOne) {
  bool ended = false;
  Semaphore go;
  Thread thread("old", [&] {
    go.wait();
    ended = true;
  });
  go.signal();
  thread = Thread("new", [] {});
  EXPECT_TRUE(ended);
  EXPECT_EQ(thread.name(), "new");
  EXPECT_TRUE(thread.joinable());
}

// What a thread's body uses after its owner is destroyed.
struct Afterlife {
  std::unique_ptr<Thread> owner;
  Semaphore owned;
  Semaphore ended;
  bool joinable = true;
};

TEST(Thread, ABodyThatDestroysItsOwnerRunsOn) {
  const auto life = std::make_shared<Afterlife>();
  life->owner = std::make_unique<Thread>("body", [life] {
    life->owned.wait();
    life->owner.reset();
    life->ended.signal();
  });
  life->owned.signal();
  life->ended.wait();
  EXPECT_EQ(life->owner, nullptr);
}

TEST(Thread, ABodyThatJoinsItselfRunsOn) {
  const auto life = std::make_shared<Afterlife>();
  life->owner = std::make_unique<Thread>("body", [life] {
    life->owned.wait();
    life->owner->join();
    life->joinable = life->owner->joinable();
    life->ended.signal();
  });
  life->owned.signal();
  life->ended.wait();
  EXPECT_FALSE(life->joinable);
  life->owner.reset();
}

TEST(Thread, OneThatCannotBeStartedIsAnError) {
  const NoThreads none;
  EXPECT_EQ(errorText([] { const Thread thread("works", [] {}); }), noThreadText);
}

}  // namespace
}  // namespace quorvane
