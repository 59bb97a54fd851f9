#include "hid/linux/write_lock_queue.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hid/linux/hidraw_port.h"
#include "support/unique_fd.h"
#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"
#include "tests/support/temporary_directory.h"

namespace quorvane::write_line_test {
namespace {

// A file in place of a node. Each opening has its own queue object, like another program.
class WriteLockQueueTest : public testing::Test {
 protected:
  struct Opening {
    explicit Opening(const std::filesystem::path& node, int flags = O_RDWR)
        : fd(::open(node.c_str(), flags | O_CREAT | O_CLOEXEC, 0600)), line(fd.get()) {}

    UniqueFd fd;
    WriteLockQueue line;
  };

  std::unique_ptr<Opening> open(int flags = O_RDWR) const {
    return std::make_unique<Opening>(node_, flags);
  }

  const TemporaryDirectory directory_;
  const std::filesystem::path node_ = directory_ / "node";
};

TEST_F(WriteLockQueueTest, WhoIsAloneHasTheTurnAtOnceAndAgain) {
  const auto only = open();
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(only->line.tryLock());
    EXPECT_TRUE(only->line.tryLock());
    only->line.leave();
  }
  only->line.leave();
  EXPECT_FALSE(only->line.areOthersThere());
}

TEST_F(WriteLockQueueTest, OneHasTheTurnUntilItLeaves) {
  const auto first = open();
  const auto second = open();
  EXPECT_TRUE(first->line.tryLock());
  EXPECT_FALSE(second->line.tryLock());
  EXPECT_TRUE(first->line.tryLock());
  EXPECT_FALSE(second->line.tryLock());
  first->line.leave();
  EXPECT_TRUE(second->line.tryLock());
  EXPECT_FALSE(first->line.tryLock());
}

TEST_F(WriteLockQueueTest, NobodyOvertakesHoweverOftenItAsks) {
  std::vector<std::unique_ptr<Opening>> programs(5);
  for (auto& program : programs) program = open();
  for (const auto& program : programs) program->line.tryLock();
  // The program that has just released the lock asks again at once, before all others.
  for (std::size_t round = 0; round < 40; ++round) {
    const std::size_t owner = round % programs.size();
    for (std::size_t i = 0; i < programs.size(); ++i) {
      EXPECT_EQ(programs[i]->line.tryLock(), i == owner) << round << " " << i;
    }
    programs[owner]->line.leave();
    for (int times = 0; times < 3; ++times) EXPECT_FALSE(programs[owner]->line.tryLock());
  }
}

TEST_F(WriteLockQueueTest, MoreThanTheLineHoldsAllGetTheirTurn) {
  std::vector<std::unique_ptr<Opening>> programs(20);
  for (auto& program : programs) program = open();
  for (const auto& program : programs) program->line.tryLock();
  for (std::size_t served = 0; served < 20; ++served) {
    std::size_t have = 0;
    std::size_t last = 0;
    for (int moves = 0; moves < 10; ++moves) {
      have = 0;
      for (std::size_t i = 0; i < programs.size(); ++i) {
        if (!programs[i]->line.tryLock()) continue;
        ++have;
        last = i;
      }
    }
    ASSERT_EQ(have, 1U);
    programs.erase(programs.begin() + static_cast<std::ptrdiff_t>(last));
  }
}

TEST_F(WriteLockQueueTest, WhoGivesUpWaitingIsInNobodysWay) {
  const auto first = open();
  const auto second = open();
  const auto third = open();
  EXPECT_TRUE(first->line.tryLock());
  EXPECT_FALSE(second->line.tryLock());
  EXPECT_FALSE(third->line.tryLock());
  second->line.leave();
  first->line.leave();
  EXPECT_TRUE(third->line.tryLock());
}

TEST_F(WriteLockQueueTest, ClosingEndsTheTurnAndTheWaiting) {
  auto first = open();
  auto second = open();
  const auto third = open();
  EXPECT_TRUE(first->line.tryLock());
  EXPECT_FALSE(second->line.tryLock());
  EXPECT_FALSE(third->line.tryLock());
  second.reset();
  EXPECT_FALSE(third->line.tryLock());
  first.reset();
  EXPECT_TRUE(third->line.tryLock());
  EXPECT_FALSE(third->line.areOthersThere());
}

TEST_F(WriteLockQueueTest, AKilledProgramLeavesNothing) {
  const Pipe ready;
  ChildProcess program([&]() -> std::string {
    const auto opening = open();
    if (!opening->line.tryLock()) return "no lock";
    if (::write(ready.writing.get(), "", 1) != 1) return "no word";
    ::pause();
    return "woken";
  });
  char byte = 1;
  ASSERT_EQ(::read(ready.reading.get(), &byte, 1), 1);
  const auto own = open();
  EXPECT_TRUE(own->line.areOthersThere());
  EXPECT_FALSE(own->line.tryLock());
  program.kill();
  EXPECT_EQ(program.end(), "signal 9");
  EXPECT_TRUE(own->line.tryLock());
  EXPECT_FALSE(own->line.areOthersThere());
}

TEST_F(WriteLockQueueTest, OthersAreThereWhileTheyHaveTheNodeOpen) {
  const auto first = open();
  EXPECT_FALSE(first->line.areOthersThere());
  auto second = open();
  EXPECT_TRUE(first->line.areOthersThere());
  EXPECT_TRUE(second->line.areOthersThere());
  EXPECT_TRUE(second->line.tryLock());
  EXPECT_TRUE(first->line.areOthersThere());
  second.reset();
  EXPECT_FALSE(first->line.areOthersThere());
}

TEST_F(WriteLockQueueTest, WhereLocksCannotBeHadItIsEverybodysTurnAndOthersMayBeThere) {
  const auto first = open();
  EXPECT_TRUE(first->line.tryLock());
  // The system refuses an exclusive lock on a file that is not open for writing.
  const auto second = open(O_RDONLY);
  EXPECT_TRUE(second->line.tryLock());
  first->line.leave();
  EXPECT_TRUE(second->line.tryLock());
  second->line.leave();
  EXPECT_TRUE(second->line.areOthersThere());

  WriteLockQueue none(-1);
  EXPECT_TRUE(none.tryLock());
  EXPECT_TRUE(none.areOthersThere());
  none.leave();
}

TEST_F(WriteLockQueueTest, WhileTheSystemIsOutOfLocksItIsEverybodysTurnAndOthersMayBeThere) {
  const auto first = open();
  const auto second = open();
  EXPECT_TRUE(first->line.tryLock());
  {
    const FileCalls calls(FileCalls::failEach("fcntl", ENOLCK));
    EXPECT_TRUE(second->line.tryLock());
    EXPECT_TRUE(second->line.areOthersThere());
  }
  EXPECT_FALSE(second->line.tryLock());
  first->line.leave();
  EXPECT_TRUE(second->line.tryLock());
}

FileCalls::Verdict interruptFirstLock() {
  return [isFirst = true](const FileCall& call, std::size_t) mutable {
    return call.name == "fcntl" && std::exchange(isFirst, false) ? EINTR : 0;
  };
}

TEST_F(WriteLockQueueTest, ASignalInBetweenIsNoAnswer) {
  const auto first = open();
  EXPECT_TRUE(first->line.tryLock());
  {
    const FileCalls calls(interruptFirstLock());
    const auto second = open();
    EXPECT_TRUE(first->line.areOthersThere());
  }
  const auto second = open();
  {
    const FileCalls calls(interruptFirstLock());
    EXPECT_FALSE(second->line.tryLock());
  }
  first->line.leave();
  first->fd.reset();
  const FileCalls calls(interruptFirstLock());
  EXPECT_FALSE(second->line.areOthersThere());
}

TEST_F(WriteLockQueueTest, WhoIsStoppedAtItsTurnCanBeNamed) {
  ChildProcess other([this] {
    const auto opening = open();
    opening->line.tryLock();
    ::raise(SIGSTOP);
    return std::string();
  });
  other.waitUntilStopped();
  {
    HidrawPort port(std::move(open()->fd), true);
    EXPECT_FALSE(port.tryWriteLock());
    const auto holder = port.writeLockHolder();
    ASSERT_TRUE(holder);
    EXPECT_EQ(holder->process, other.id());
    EXPECT_TRUE(holder->isStopped);
  }
  other.goOn();
  other.end();
}

}  // namespace
}  // namespace quorvane::write_line_test
