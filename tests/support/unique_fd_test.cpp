#include "support/unique_fd.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/eventfd.h>

#include <utility>

namespace quorvane {
namespace {

bool isOpen(int fd) { return ::fcntl(fd, F_GETFD) != -1; }

int openDescriptor() { return ::eventfd(0, EFD_CLOEXEC); }

TEST(UniqueFd, StandsForNoneByDefault) {
  UniqueFd fd;
  EXPECT_FALSE(fd);
  EXPECT_EQ(fd.get(), -1);
  fd.reset();
  EXPECT_EQ(fd.get(), -1);
}

TEST(UniqueFd, ZeroIsADescriptor) {
  const int saved = ::dup(0);
  {
    const UniqueFd fd(0);
    EXPECT_TRUE(fd);
  }
  EXPECT_FALSE(isOpen(0));
  ::dup2(saved, 0);
  ::close(saved);
}

TEST(UniqueFd, ClosesWhatItOwnsWhenDestroyed) {
  const int number = openDescriptor();
  {
    const UniqueFd fd(number);
    EXPECT_TRUE(fd);
    EXPECT_EQ(fd.get(), number);
    EXPECT_TRUE(isOpen(number));
  }
  EXPECT_FALSE(isOpen(number));
}

TEST(UniqueFd, ResetClosesOnce) {
  const int number = openDescriptor();
  UniqueFd fd(number);
  fd.reset();
  EXPECT_FALSE(fd);
  EXPECT_FALSE(isOpen(number));
  const UniqueFd next(openDescriptor());
  ASSERT_EQ(next.get(), number);
  fd.reset();
  EXPECT_TRUE(isOpen(number));
}

TEST(UniqueFd, MovesToAnotherOwner) {
  const int number = openDescriptor();
  UniqueFd first(number);
  {
    const UniqueFd second(std::move(first));
    EXPECT_EQ(second.get(), number);
    EXPECT_EQ(first.get(), -1);  // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(isOpen(number));
  }
  EXPECT_FALSE(isOpen(number));
}

TEST(UniqueFd, AssignmentClosesWhatWasOwnedBefore) {
  const int kept = openDescriptor();
  const int replaced = openDescriptor();
  UniqueFd fd(replaced);
  fd = UniqueFd(kept);
  EXPECT_EQ(fd.get(), kept);
  EXPECT_TRUE(isOpen(kept));
  EXPECT_FALSE(isOpen(replaced));
}

TEST(UniqueFd, AssignmentToItselfKeepsTheDescriptor) {
  const int number = openDescriptor();
  UniqueFd fd(number);
  UniqueFd& same = fd;
  fd = std::move(same);
  EXPECT_EQ(fd.get(), number);
  EXPECT_TRUE(isOpen(number));
}

}  // namespace
}  // namespace quorvane
