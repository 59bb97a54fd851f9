#include "app/shared_presets.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <QEventLoop>
#include <cerrno>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/file_lock.h"
#include "tests/support/file_calls.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using std::chrono::milliseconds;

// A clock that releases `lock` at the first pause.
class ReleasingClock final : public Clock {
 public:
  Monotonic::time_point now() override { return system().now(); }
  void sleepFor(Seconds /*duration*/) override { lock.reset(); }
  bool wait(Semaphore& /*semaphore*/, Seconds /*timeout*/) override { return false; }

  std::optional<UniqueFd> lock;
};

class SharedPresetsTest : public testing::Test {
 protected:
  UniqueFd lockOfOther() const {
    UniqueFd fd(::open((directory_ / ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    EXPECT_EQ(tryLockFile(fd), FileLockResult::locked);
    return fd;
  }

  static TuningPreset named(std::string name) {
    TuningPreset preset;
    preset.name = std::move(name);
    return preset;
  }

  std::string stored() const {
    std::string names;
    for (const TuningPreset& preset : store_.read()) names += preset.name + " ";
    return names;
  }

  static std::string shown(const SharedPresets& list) {
    std::string names;
    for (const TuningPreset& preset : list.presets()) names += preset.name + " ";
    return names;
  }

  const TemporaryDirectory directory_;
  ReleasingClock clock_;
  const PresetStore store_{directory_ / "presets.json", clock_};
};

TEST_F(SharedPresetsTest, AChangeWaitsForTheLockByATimer) {
  std::optional<UniqueFd> lock(lockOfOther());
  SharedPresets list(store_);
  list.change(PresetChange::add({named("one")}));
  list.change(PresetChange::add({named("two")}));
  EXPECT_EQ(shown(list), "one two ");
  EXPECT_EQ(stored(), "");
  lock.reset();
  FileWatch watch(store_.fileURL());
  QEventLoop loop;
  QObject::connect(&watch, &FileWatch::touched, &loop, [&] {
    if (!stored().empty()) loop.quit();
  });
  loop.exec();
  EXPECT_EQ(stored(), "one two ");
}

TEST_F(SharedPresetsTest, ALockThatDoesNotComeIsAnErrorAndTheNextChangeWritesAll) {
  std::optional<UniqueFd> lock(lockOfOther());
  SharedPresets list(store_, milliseconds(50));
  std::vector<std::string> failures;
  QEventLoop loop;
  QObject::connect(&list, &SharedPresets::saveFailed, &loop, [&](const std::string& reason) {
    failures.push_back(reason);
    loop.quit();
  });
  list.change(PresetChange::add({named("one")}));
  EXPECT_TRUE(failures.empty());
  loop.exec();
  EXPECT_EQ(failures, std::vector<std::string>{store_.timeoutError().what()});
  EXPECT_EQ(shown(list), "one ");
  EXPECT_EQ(stored(), "");
  lock.reset();
  list.change(PresetChange::add({named("two")}));
  EXPECT_EQ(stored(), "one two ");
  EXPECT_EQ(failures.size(), 1U);
}

TEST_F(SharedPresetsTest, WhatWaitsForTheLockIsWrittenAtTheEnd) {
  clock_.lock.emplace(lockOfOther());
  SharedPresets list(store_);
  list.change(PresetChange::add({named("one")}));
  EXPECT_EQ(stored(), "");
  list.finish();
  EXPECT_EQ(stored(), "one ");
}

TEST_F(SharedPresetsTest, NoCallThatFailsOnceCostsAPreset) {
  const TuningPreset wet = named("wet");
  const TuningPreset dry = named("dry");
  struct Case {
    const char* description;
    PresetChange change;
    std::string before;
    std::string after;
  };
  const std::vector<Case> cases{
      {"save", PresetChange::add({named("new")}), "wet dry ", "wet dry new "},
      {"import", PresetChange::add({named("new"), named("more")}), "wet dry ", "wet dry new more "},
      {"delete", PresetChange::remove(dry), "wet dry ", "wet "},
      {"undo", PresetChange::insert(named("old"), {wet.id, 1}), "wet dry ", "wet old dry "},
  };
  for (const auto& [description, change, before, after] : cases) {
    for (const int error : {EIO, EMFILE, EAGAIN, ENOSPC, EACCES, EPERM}) {
      bool isOver = false;
      for (std::size_t number = 0; !isOver; ++number) {
        SCOPED_TRACE(std::string(description) + ", call " + std::to_string(number) + ", " +
                     std::to_string(error));
        store_.save({wet, dry});
        SharedPresets list(store_);
        bool failed = false;
        QObject::connect(&list, &SharedPresets::saveFailed, [&] { failed = true; });
        {
          const FileCalls calls(FileCalls::failAt(number, error));
          list.change(change);
          isOver = calls.made().size() <= number;
        }
        list.finish();
        EXPECT_EQ(shown(list), after);
        // An error after the replacement leaves the new list.
        EXPECT_TRUE(stored() == after || (failed && stored() == before)) << stored();
        list.change(PresetChange::add({named("next")}));
        EXPECT_EQ(stored(), after + "next ");
        EXPECT_EQ(directory_.names(), std::set<std::string>{"presets.json"});
        if (isOver) {
          EXPECT_GT(number, 15U);
        }
      }
    }
  }
}

TEST_F(SharedPresetsTest, AFileThatCannotBeReadIsReadAgainByATimer) {
  store_.save({named("wet")});
  std::optional<SharedPresets> list;
  {
    const FileCalls calls(FileCalls::failEach("open", EMFILE));
    list.emplace(store_);
    EXPECT_GT(calls.count("open"), 0U);
  }
  EXPECT_EQ(shown(*list), "");
  QEventLoop loop;
  QObject::connect(&*list, &SharedPresets::changed, &loop, &QEventLoop::quit);
  loop.exec();
  EXPECT_EQ(shown(*list), "wet ");
}

TEST_F(SharedPresetsTest, APresetThatAnotherProgramChangedIsNotRemoved) {
  const TuningPreset ours = named("wet");
  TuningPreset theirs = ours;
  theirs.game = "theirs";
  store_.save({ours});
  SharedPresets list(store_);
  std::vector<std::string> refused;
  QObject::connect(&list, &SharedPresets::removalRefused,
                   [&](const TuningPreset& preset) { refused.push_back(preset.name); });
  store_.save({theirs});
  list.change(PresetChange::remove(ours));
  EXPECT_EQ(refused, std::vector<std::string>{"wet"});
  EXPECT_EQ(list.presets(), std::vector<TuningPreset>{theirs});
  list.change(PresetChange::remove(theirs));
  EXPECT_EQ(refused.size(), 1U);
  EXPECT_EQ(stored(), "");
}

TEST_F(SharedPresetsTest, FinishingWithNothingToWriteTouchesNothing) {
  SharedPresets list(store_);
  list.finish();
  EXPECT_FALSE(std::filesystem::exists(directory_ / ".lock"));
}

}  // namespace
}  // namespace quorvane
