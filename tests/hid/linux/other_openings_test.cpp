#include "hid/linux/other_openings.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tests/support/file_calls.h"
#include "tests/support/temporary_directory.h"

namespace quorvane::node_visits_test {
namespace {

class OtherOpeningsTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(::mkfifo(node_.c_str(), 0600), 0); }

  UniqueFd open(int flags = O_RDWR) const {
    return UniqueFd(::open(node_.c_str(), flags | O_NONBLOCK | O_CLOEXEC));
  }

  const TemporaryDirectory directory_;
  const std::filesystem::path node_ = directory_ / "node";
};

TEST_F(OtherOpeningsTest, OnesOwnOpeningIsNone) {
  const UniqueFd own = open();
  OtherOpenings visits(own.get());
  EXPECT_FALSE(visits.mayHaveBeenAny());
  ASSERT_EQ(::write(own.get(), "x", 1), 1);
  EXPECT_FALSE(visits.mayHaveBeenAny());
}

TEST_F(OtherOpeningsTest, WhoCameAndWentIsRememberedForGood) {
  for (const int flags : {O_RDWR, O_RDONLY, O_WRONLY}) {
    const UniqueFd own = open();
    OtherOpenings visits(own.get());
    EXPECT_FALSE(visits.mayHaveBeenAny());
    open(flags);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(visits.mayHaveBeenAny()) << flags;
  }
}

TEST_F(OtherOpeningsTest, OpeningsThatTheKernelTellsOfOnceHideNobody) {
  const UniqueFd own = open();
  OtherOpenings visits(own.get());
  EXPECT_FALSE(visits.mayHaveBeenAny());
  const UniqueFd first = open();
  UniqueFd second = open();
  second.reset();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(visits.mayHaveBeenAny());
}

TEST_F(OtherOpeningsTest, WhoWasThereBeforeIsSeen) {
  UniqueFd before = open();
  const UniqueFd own = open();
  OtherOpenings visits(own.get());
  EXPECT_TRUE(visits.mayHaveBeenAny());
  before.reset();
  EXPECT_TRUE(visits.mayHaveBeenAny());
}

TEST_F(OtherOpeningsTest, WhoWasThereBeforeAndLeftUnseenIsSeenLeaving) {
  UniqueFd before = open();
  const UniqueFd own = open();
  OtherOpenings visits(own.get());
  before.reset();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(visits.mayHaveBeenAny());
}

TEST_F(OtherOpeningsTest, WhoWasThereBeforeIsLookedForOnce) {
  for (const bool isAnybodyThere : {true, false}) {
    int looks = 0;
    const UniqueFd own = open();
    OtherOpenings visits(own.get(), [&] {
      ++looks;
      return isAnybodyThere;
    });
    EXPECT_EQ(looks, 0);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(visits.mayHaveBeenAny(), isAnybodyThere);
    EXPECT_EQ(looks, 1);
  }
}

TEST_F(OtherOpeningsTest, FollowTheNodeThatIsOpenAndNotItsPath) {
  const UniqueFd own = open();
  std::filesystem::remove(node_);
  ASSERT_EQ(::mkfifo(node_.c_str(), 0600), 0);
  OtherOpenings visits(own.get());
  const UniqueFd other = open();
  EXPECT_FALSE(visits.mayHaveBeenAny());
}

TEST_F(OtherOpeningsTest, AreNotKnownAnyMoreWhenTheyWereTooMany) {
  int longest = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> longest;
  ASSERT_GT(longest, 0);
  const UniqueFd own = open();
  OtherOpenings visits(own.get());
  for (int i = 0; i <= longest / 2; ++i) open();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(visits.mayHaveBeenAny());
}

TEST_F(OtherOpeningsTest, AreNotKnownWhereNothingCanBeWatched) {
  OtherOpenings visits(-1);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(visits.mayHaveBeenAny());
}

TEST_F(OtherOpeningsTest, AreNotKnownToAUserWhoWatchesTooMuchAlready) {
  const UniqueFd own = open();
  for (const char* const call : {"inotify_init1", "inotify_add_watch"}) {
    const FileCalls calls(FileCalls::failEach(call, ENOSPC));
    OtherOpenings visits(own.get());
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(visits.mayHaveBeenAny()) << call;
    EXPECT_EQ(calls.count(call), 1U);
  }
}

}  // namespace
}  // namespace quorvane::node_visits_test
