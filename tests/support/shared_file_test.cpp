#include "support/shared_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "support/file_lock.h"
#include "tests/error_text.h"
#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using SharedNames = std::set<std::string>;

// A clock whose pauses take no time and call a callback.
class PausingClock final : public Clock {
 public:
  Monotonic::time_point now() override { return now_; }
  void sleepFor(Seconds duration) override {
    now_ += std::chrono::duration_cast<Monotonic::duration>(duration);
    ++pauses_;
    if (inPause_) inPause_();
  }
  bool wait(Semaphore& /*semaphore*/, Seconds /*timeout*/) override { return false; }

  void inEachPause(std::function<void()> event) { inPause_ = std::move(event); }
  int pauses() const { return pauses_; }
  Seconds passed() const { return now_ - Monotonic::time_point(); }

 private:
  Monotonic::time_point now_;
  int pauses_ = 0;
  std::function<void()> inPause_;
};

SharedFile::Change append(std::string text) {
  return [text = std::move(text)](const std::optional<std::string>& content) {
    return SharedFile::Update{content.value_or("") + text, {}};
  };
}

class SharedFileTest : public testing::Test {
 protected:
  // Takes the lock as another program does. It is held while the descriptor is open.
  UniqueFd lockOfOther() const {
    UniqueFd fd(::open((directory_ / ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    EXPECT_EQ(tryLockFile(fd), FileLockResult::locked);
    return fd;
  }

  std::string text(int error) const {
    return file_.string() + ": " + std::generic_category().message(error);
  }

  const TemporaryDirectory directory_;
  const path file_ = directory_ / "file";
  PausingClock clock_;
  const SharedFile shared_{file_, clock_};
};

TEST_F(SharedFileTest, AChangeGetsTheContentAndReplacesIt) {
  for (const char* const expected : {"a", "aa", "aaa"}) {
    const auto result = shared_.change(append("a"));
    EXPECT_EQ(contentOf(file_), expected);
    EXPECT_EQ(result.version, versionOfFile(file_));
    EXPECT_TRUE(result.kept.empty());
  }
  EXPECT_EQ(clock_.pauses(), 0);
  EXPECT_EQ(directory_.names(), SharedNames{"file"});
}

TEST_F(SharedFileTest, CreatesItsDirectoryAndALockFileForTheUserAlone) {
  SharedFile(directory_ / "a/b/file", clock_).change(append("a"));
  EXPECT_EQ(contentOf(directory_ / "a/b/file"), "a");
  EXPECT_EQ(std::filesystem::status(directory_ / "a/b/.lock").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(SharedFileTest, NoUpdateLeavesTheFileAsItIs) {
  putFile(file_, "content");
  const auto before = versionOfFile(file_);
  const auto result = shared_.change([](const auto& content) {
    EXPECT_EQ(content, "content");
    return std::nullopt;
  });
  EXPECT_EQ(result.version, before);
  EXPECT_EQ(versionOfFile(file_), before);
}

TEST_F(SharedFileTest, WhatAChangeThrowsPassesThroughAndNothingIsWritten) {
  putFile(file_, "content");
  EXPECT_EQ(errorText([&] {
              shared_.change([](const auto&) -> std::optional<SharedFile::Update> {
                throw std::runtime_error("no");
              });
            }),
            "no");
  EXPECT_EQ(contentOf(file_), "content");
  EXPECT_EQ(directory_.names(), SharedNames{"file"});
  shared_.change(append("!"));  // the lock is free again
}

TEST_F(SharedFileTest, ALockThatIsNotGivenUpInTwoSecondsIsAnError) {
  putFile(file_, "content");
  std::optional<UniqueFd> lock(lockOfOther());
  SharedFile::Place place;
  EXPECT_FALSE(shared_.tryChange(append("!"), place));
  EXPECT_EQ(clock_.pauses(), 0);
  EXPECT_EQ(errorText([&] { shared_.change(append("!")); }),
            file_.string() +
                ": Other programs have been changing it for 2 seconds. Nothing was written. Try "
                "again, and end a Quorvane that hangs");
  EXPECT_GE(clock_.passed(), Seconds(2));
  EXPECT_LT(clock_.passed(), Seconds(2.1));
  EXPECT_EQ(contentOf(file_), "content");
  lock.reset();
  EXPECT_TRUE(shared_.tryChange(append("!"), place));
  EXPECT_EQ(contentOf(file_), "content!");
}

TEST_F(SharedFileTest, ALockThatIsGivenUpInTimeIsWaitedFor) {
  std::optional<UniqueFd> lock(lockOfOther());
  clock_.inEachPause([&] {
    if (clock_.pauses() == 5) lock.reset();
  });
  shared_.change(append("a"));
  EXPECT_EQ(contentOf(file_), "a");
  EXPECT_EQ(clock_.pauses(), 5);
}

TEST_F(SharedFileTest, ALockEndsWithItsProcess) {
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              shared_.change([](const auto&) -> std::optional<SharedFile::Update> {
                ::raise(SIGKILL);
                return std::nullopt;
              });
              return "";
            }),
            "signal 9");
  SharedFile::Place place;
  EXPECT_TRUE(shared_.tryChange(append("a"), place));
}

TEST_F(SharedFileTest, CallsBackOnceTheFileIsReplacedAndWithTheLockHeld) {
  int calls = 0;
  const SharedFile::Change change = [&](const auto&) {
    return SharedFile::Update{"new", {}, [&] {
                                ++calls;
                                EXPECT_EQ(contentOf(file_), "new");
                                SharedFile::Place place;
                                EXPECT_FALSE(shared_.tryChange(append("other"), place));
                              }};
  };
  shared_.change(change);
  EXPECT_EQ(calls, 1);
  const FileCalls failing(FileCalls::failEach("rename", ENOSPC));
  EXPECT_NE(errorText([&] { shared_.change(change); }), "no error");
  EXPECT_EQ(calls, 1);
}

TEST_F(SharedFileTest, WhoWaitsIsNotOvertaken) {
  SharedFile::Place place;
  shared_.change([&](const auto&) {
    EXPECT_FALSE(shared_.tryChange(append("second"), place));
    return SharedFile::Update{"first ", {}};
  });
  // Another change between two tries does not overtake.
  EXPECT_NE(errorText([&] { shared_.change(append("third")); }), "no error");
  EXPECT_TRUE(shared_.tryChange(append("second "), place));
  shared_.change(append("third"));
  EXPECT_EQ(contentOf(file_), "first second third");
  // A place that was left blocks no one.
  shared_.change([&](const auto&) {
    EXPECT_FALSE(shared_.tryChange(append("none"), place));
    return std::optional<SharedFile::Update>();
  });
  place.leave();
  shared_.change(append(" fourth"));
  EXPECT_EQ(contentOf(file_), "first second third fourth");
}

TEST_F(SharedFileTest, OnAFileSystemWithoutLocksChangesAreMadeWithout) {
  for (const int error : {ENOLCK, EINVAL, EOPNOTSUPP, ENOSYS}) {
    const FileCalls calls(FileCalls::failEach("fcntl", error));
    putFile(file_, "");
    int times = 0;
    shared_.change([&](const std::optional<std::string>& content) {
      // Another program changes it after it was read.
      if (++times == 1) replaceFile(file_, "theirs ");
      return SharedFile::Update{content.value_or("") + "ours", {}};
    });
    EXPECT_EQ(times, 2);
    EXPECT_EQ(contentOf(file_), "theirs ours");
  }
  EXPECT_EQ(directory_.names(), SharedNames{"file"});
}

TEST_F(SharedFileTest, ALockThatFailsIsAnErrorAndNothingIsWritten) {
  putFile(file_, "content");
  for (const int error : {EIO, EACCES, ENOMEM}) {
    const FileCalls calls(FileCalls::failEach("fcntl", error));
    const std::string failure = errorText([&] { shared_.change(append("!")); });
    EXPECT_TRUE(failure.ends_with(std::generic_category().message(error))) << failure;
    EXPECT_EQ(contentOf(file_), "content");
  }
}

TEST_F(SharedFileTest, ALockFileThatIsInTheWayIsNamed) {
  putFile(file_, "content");
  const std::string name = directory_ / ".lock";
  std::filesystem::create_directory(name);
  EXPECT_EQ(errorText([&] { shared_.change(append("!")); }), name + ": Is a directory");
  std::filesystem::remove(name);
  std::filesystem::create_symlink("elsewhere", name);
  EXPECT_EQ(errorText([&] { shared_.change(append("!")); }),
            name + ": Too many levels of symbolic links");
  EXPECT_FALSE(std::filesystem::exists(directory_ / "elsewhere"));
  std::filesystem::remove(name);
  putFile(name, "");
  std::filesystem::permissions(name, std::filesystem::perms::none);
  EXPECT_EQ(inChildProcess([&] {
              std::filesystem::permissions(file_, std::filesystem::perms::all);
              becomeOrdinaryUser();
              return errorText([&] { shared_.change(append("!")); });
            }),
            name + ": Permission denied");
  EXPECT_EQ(contentOf(file_), "content");
}

TEST_F(SharedFileTest, ALockFileThatRootMakesIsTheDirectoryOwners) {
  if (::geteuid() != 0) return;  // only root can give files away
  ASSERT_EQ(::chown(directory_.path().c_str(), ordinaryUser, ordinaryUser), 0);
  shared_.change(append("a"));
  struct stat status {};
  ASSERT_EQ(::stat((directory_ / ".lock").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, ordinaryUser);
}

TEST_F(SharedFileTest, AllNamesOfOneFileShareOneLock) {
  std::filesystem::create_directory(directory_ / "there");
  std::filesystem::create_symlink("there/real", file_);
  shared_.change(append("a"));
  EXPECT_EQ(contentOf(directory_ / "there/real"), "a");
  EXPECT_TRUE(std::filesystem::is_symlink(file_));
  EXPECT_TRUE(std::filesystem::exists(directory_ / "there/.lock"));
  EXPECT_FALSE(std::filesystem::exists(directory_ / ".lock"));
}

TEST_F(SharedFileTest, AFileThatCannotBeReadIsNeverReplaced) {
  putFile(file_, "content");
  for (const char* const call : {"open", "fstat", "read"}) {
    for (const int error : {EIO, EMFILE, EAGAIN, EACCES, ENOMEM}) {
      bool failed = false;
      const FileCalls calls([&](const FileCall& made, std::size_t) {
        if (failed || made.name != call || made.file != file_) return 0;
        failed = true;
        return error;
      });
      EXPECT_EQ(errorText([&] { shared_.change(append("!")); }), text(error));
      EXPECT_TRUE(failed);
      EXPECT_EQ(contentOf(file_), "content");
    }
  }
}

TEST_F(SharedFileTest, TheOldFileIsKeptWhenTheChangeSaysSo) {
  putFile(file_, "old");
  const auto result = shared_.change([](const auto&) { return SharedFile::Update{"new", "kept"}; });
  EXPECT_EQ(result.kept, directory_ / "file.kept");
  EXPECT_EQ(contentOf(result.kept), "old");
  EXPECT_EQ(contentOf(file_), "new");
}

TEST_F(SharedFileTest, AFileThatIsNotReplacedIsNotKept) {
  putFile(file_, "old");
  for (const bool links : {true, false}) {
    for (const char* const failing : {"write", "rename"}) {
      const FileCalls calls([&](const FileCall& call, std::size_t) {
        if (call.name == "link" && !links) return EPERM;
        return call.name == failing ? ENOSPC : 0;
      });
      EXPECT_EQ(errorText([&] {
                  shared_.change([](const auto&) { return SharedFile::Update{"new", "kept"}; });
                }),
                text(ENOSPC));
      EXPECT_EQ(directory_.names(), SharedNames{"file"});
      EXPECT_EQ(contentOf(file_), "old");
    }
  }
}

TEST_F(SharedFileTest, AFileThatIsBeingRewrittenInPlaceIsReadAgainBeforeItIsKept) {
  putFile(file_, "ha");
  clock_.inEachPause([&] {
    if (clock_.pauses() == 1) putFile(file_, "half");
    if (clock_.pauses() == 2) putFile(file_, "whole");
  });
  const auto result = shared_.change([](const std::optional<std::string>& content) {
    const bool isWhole = content == "whole";
    return SharedFile::Update{*content + "!", isWhole ? std::nullopt : std::optional("kept")};
  });
  EXPECT_EQ(contentOf(file_), "whole!");
  EXPECT_TRUE(result.kept.empty());
  EXPECT_EQ(directory_.names(), SharedNames{"file"});
}

TEST_F(SharedFileTest, AFileThatNeverSettlesIsAnErrorAfterTwoSeconds) {
  putFile(file_, "");
  clock_.inEachPause(
      [&] { putFile(file_, std::string(static_cast<std::size_t>(1 + clock_.pauses() % 7), 'x')); });
  EXPECT_NE(errorText([&] {
              shared_.change([](const auto&) { return SharedFile::Update{"new", "kept"}; });
            }),
            "no error");
  EXPECT_LT(clock_.passed(), Seconds(2.5));
  EXPECT_EQ(directory_.names(), SharedNames{"file"});
}

TEST_F(SharedFileTest, AFileThatIsWrittenToInTheMiddleOfAReadingIsReadAgain) {
  putFile(file_, "half");
  bool written = false;
  std::string seen;
  {
    const FileCalls calls([&](const FileCall& call, std::size_t) {
      if (call.name == "read" && !written) {
        written = true;
        putFile(file_, "the whole");
      }
      return 0;
    });
    seen = readFile(file_);
    EXPECT_EQ(calls.count("open"), 2U);
  }
  EXPECT_EQ(seen, "the whole");
  const FileCalls calls([&](const FileCall& call, std::size_t number) {
    if (call.name == "read") putFile(file_, std::string(number, 'x'));
    return 0;
  });
  EXPECT_EQ(errorText([&] { readFile(file_); }),
            file_.string() + ": Another program is writing to it");
}

class Leftovers : public SharedFileTest {
 protected:
  static constexpr const char* left = ".quorvane-4000000-3.tmp";
};

TEST_F(Leftovers, OfKilledChangesAreRemovedByTheNext) {
  for (int number = 0;; ++number) {
    const std::string end = inChildProcess([&]() -> std::string {
      const FileCalls calls(FileCalls::dieAt(static_cast<std::size_t>(number)));
      shared_.change(append("a"));
      return "done";
    });
    shared_.change(append("b"));
    EXPECT_EQ(directory_.names(), SharedNames{"file"}) << number;
    if (end == "done") break;
    ASSERT_EQ(end, "signal 9");
  }
}

TEST_F(Leftovers, OnlyTheUsersOwnTemporaryFilesAreRemoved) {
  const SharedNames others{".quorvane-1-2.tmpx", ".quorvane-1.tmp",  ".quorvane-a-2.tmp",
                           ".quorvane--2.tmp",   ".quorvane-1-.tmp", "quorvane-1-2.tmp",
                           ".quorvane-1-2-3.tmp"};
  for (const std::string& name : others) putFile(directory_ / name, "");
  std::filesystem::create_directory(directory_ / ".quorvane-1-7.tmp");
  std::filesystem::create_symlink("file", directory_ / ".quorvane-1-8.tmp");
  ASSERT_EQ(::mkfifo((directory_ / ".quorvane-1-9.tmp").c_str(), 0600), 0);
  putFile(directory_ / left, "left");
  shared_.change(append("a"));
  SharedNames expected = others;
  expected.insert({"file", ".quorvane-1-7.tmp", ".quorvane-1-8.tmp", ".quorvane-1-9.tmp"});
  EXPECT_EQ(directory_.names(), expected);
}

TEST_F(Leftovers, OfAnotherUserStay) {
  if (::geteuid() != 0) return;  // only root can give files away
  putFile(directory_ / left, "left");
  ASSERT_EQ(::chown((directory_ / left).c_str(), ordinaryUser, ordinaryUser), 0);
  shared_.change(append("a"));
  EXPECT_EQ(directory_.names(), (SharedNames{"file", left}));
}

TEST_F(Leftovers, AFileThatIsBeingWrittenStays) {
  // In a process of its own, which holds a lock of its own.
  Pipe ready;
  Pipe go;
  ChildProcess writer([&]() -> std::string {
    const FileCalls calls([&](const FileCall& call, std::size_t) {
      char byte = 0;
      if (call.name == "rename" &&
          (::write(ready.writing.get(), "r", 1) != 1 || ::read(go.reading.get(), &byte, 1) != 1)) {
        return EIO;
      }
      return 0;
    });
    replaceFile(directory_ / "other", "theirs");
    return "done";
  });
  char byte = 0;
  ASSERT_EQ(::read(ready.reading.get(), &byte, 1), 1);
  shared_.change(append("a"));
  EXPECT_EQ(directory_.names().size(), 2U);
  ASSERT_EQ(::write(go.writing.get(), "g", 1), 1);
  EXPECT_EQ(writer.end(), "done");
  EXPECT_EQ(contentOf(directory_ / "other"), "theirs");
}

TEST_F(SharedFileTest, AppendedLinesFollowWhatIsThere) {
  shared_.append("a\n", SharedFile::Sync::yes);
  shared_.append("b\n", SharedFile::Sync::no);
  EXPECT_EQ(contentOf(file_), "a\nb\n");
  putFile(file_, "torn");
  const auto result = shared_.append("c\n", SharedFile::Sync::no);
  EXPECT_EQ(contentOf(file_), "torn\nc\n");
  EXPECT_EQ(result.version, versionOfFile(file_));
}

TEST_F(SharedFileTest, AnAppendIsOneWriteAndSyncedIfAsked) {
  FileCalls calls;
  shared_.append("a\n", SharedFile::Sync::yes);
  EXPECT_EQ(calls.count("write"), 1U);
  EXPECT_EQ(calls.count("fsync"), 2U);  // of the new file and its directory
  shared_.append("b\n", SharedFile::Sync::yes);
  EXPECT_EQ(calls.count("fsync"), 3U);
  shared_.append("c\n", SharedFile::Sync::no);
  EXPECT_EQ(calls.count("fsync"), 3U);
  EXPECT_EQ(calls.count("write"), 3U);
}

TEST_F(SharedFileTest, AShortAppendIsCompleted) {
  FileCalls calls;
  calls.shortenWrites(3);
  shared_.append("seven\n", SharedFile::Sync::no);
  EXPECT_EQ(contentOf(file_), "seven\n");
}

TEST_F(SharedFileTest, AnAppendWaitsForOtherPrograms) {
  EXPECT_EQ(errorText([&] {
              shared_.change([&](const auto&) -> std::optional<SharedFile::Update> {
                shared_.append("a\n", SharedFile::Sync::no);
                return std::nullopt;
              });
            }),
            shared_.timeoutError().what());
}

TEST_F(SharedFileTest, AnAppendThatFailsIsAnError) {
  putFile(file_, "a\n");
  for (const char* const call : {"write", "fsync"}) {
    const FileCalls calls(FileCalls::failEach(call, ENOSPC));
    EXPECT_EQ(errorText([&] { shared_.append("b\n", SharedFile::Sync::yes); }), text(ENOSPC));
  }
  std::filesystem::remove(file_);
  std::filesystem::create_directory(file_);
  EXPECT_EQ(errorText([&] { shared_.append("b\n", SharedFile::Sync::no); }), text(EISDIR));
}

}  // namespace
}  // namespace quorvane
