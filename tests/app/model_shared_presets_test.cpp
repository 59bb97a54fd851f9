#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <cerrno>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "presets/preset_change.h"
#include "presets/preset_coding.h"
#include "support/thread.h"
#include "tests/app/model_fixture.h"
#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"
#include "tests/support/killed_commands.h"
#include "tests/support/patient_clock.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using PresetNames = std::vector<std::string>;

PresetNames presetNames(const std::vector<TuningPreset>& presets) {
  PresetNames names;
  names.reserve(presets.size());
  for (const TuningPreset& preset : presets) names.push_back(preset.name);
  return names;
}

// Other programs that change the model's preset file.
class ModelSharedPresets : public ModelTest {
 protected:
  PresetNames shown() { return presetNames(model().userPresets()); }
  PresetNames stored() const { return presetNames(store_->read()); }

  void awaitShown(const PresetNames& names) {
    waitUntil([&] { return shown() == names; });
  }

  void addElsewhere(const TuningPreset& preset) const {
    changeElsewhere(PresetChange::add({preset}));
  }
  void changeElsewhere(const PresetChange& change) const {
    PatientClock clock;
    PresetStore(store_->fileURL(), clock).change([&](auto& presets) { change.apply(presets); });
  }

  const TuningPreset wet_ = presetOf("Wet", {{TuningParameter::forceFeedback, 70}});
  const TuningPreset dry_ = presetOf("Dry", {});
  const TuningPreset spa_ = presetOf("Spa", {});
};

TEST_F(ModelSharedPresets, AVersionThatIsNotKeptIsTold) {
  const path inTheWay = directory_ / "state";
  store_.emplace(directory_ / "presets.json", Clock::system(),
                 VersionFolder(inTheWay / "versions"));
  start();
  model().saveCurrentAsPreset("Wet");
  putFile(inTheWay, "a file");
  takeLog();
  model().saveCurrentAsPreset("Dry");
  EXPECT_EQ(stored(), (PresetNames{"Wet", "Dry"}));
  EXPECT_EQ(takeLog(), (Lines{"[error] The presets before this change were not kept as a "
                              "version: " +
                                  inTheWay.string() + ": Not a directory",
                              "[log] Saved preset \"Dry\""}));
}

TEST_F(ModelSharedPresets, WhatOthersSaveAndDeleteIsShown) {
  startWithoutBase();
  addElsewhere(wet_);
  awaitShown({"Wet"});
  addElsewhere(dry_);
  awaitShown({"Wet", "Dry"});
  changeElsewhere(PresetChange::remove(wet_));
  awaitShown({"Dry"});
  std::filesystem::remove(store_->fileURL());
  awaitShown({});
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelSharedPresets, AFileThatIsRewrittenInPlaceIsShown) {
  store_->save({wet_});
  startWithoutBase();
  putFile(store_->fileURL(), encodePresets({wet_, dry_}));
  awaitShown({"Wet", "Dry"});
  putFile(store_->fileURL(), encodePresets({spa_}));
  awaitShown({"Spa"});
}

TEST_F(ModelSharedPresets, AFolderThatAppearsLaterIsNoticed) {
  store_.emplace(directory_ / "a/b/presets.json");
  startWithoutBase();
  addElsewhere(wet_);
  awaitShown({"Wet"});
  addElsewhere(dry_);
  awaitShown({"Wet", "Dry"});
}

TEST_F(ModelSharedPresets, AFileBehindALinkIsFollowed) {
  std::filesystem::create_directory(directory_ / "there");
  std::filesystem::create_symlink("there/mine.json", store_->fileURL());
  startWithoutBase();
  addElsewhere(wet_);
  awaitShown({"Wet"});
  addElsewhere(dry_);
  awaitShown({"Wet", "Dry"});
}

TEST_F(ModelSharedPresets, OwnChangesAreNotAnnouncedTwice) {
  store_->save({wet_});
  startWithoutBase();
  model().deletePreset(wet_);
  changes_ = 0;
  addElsewhere(dry_);
  awaitShown({"Dry"});
  EXPECT_EQ(changes_, 1);
}

TEST_F(ModelSharedPresets, ChangesHereUndoNothingThatOthersSaved) {
  store_->save({wet_, dry_});
  start();
  addElsewhere(spa_);
  model().saveCurrentAsPreset("New");
  EXPECT_EQ(stored(), (PresetNames{"Wet", "Dry", "Spa", "New"}));
  EXPECT_EQ(shown(), stored());
  changeElsewhere(PresetChange::remove(dry_));
  model().deletePreset(wet_);
  EXPECT_EQ(stored(), (PresetNames{"Spa", "New"}));
  EXPECT_EQ(shown(), stored());
}

TEST_F(ModelSharedPresets, ADeletedOneComesBackToItsPlaceAmongWhatOthersSaved) {
  store_->save({wet_, dry_, spa_});
  startWithoutBase();
  model().deletePreset(dry_);
  changeElsewhere(PresetChange::insert(presetOf("New", {}), {}));
  model().undoPresets();
  EXPECT_EQ(stored(), (PresetNames{"New", "Wet", "Dry", "Spa"}));
  EXPECT_EQ(store_->read()[2], dry_);
  EXPECT_EQ(takeLog(), (Lines{"[log] Deleted \"Dry\"", "[log] Brought back \"Dry\""}));
}

TEST_F(ModelSharedPresets, OneThatAnotherProgramChangedIsNotDeleted) {
  store_->save({wet_});
  startWithoutBase();
  TuningPreset changed = wet_;
  changed.values["FF"] = 10;
  changeElsewhere(PresetChange::replace(wet_, changed));
  model().deletePreset(wet_);
  EXPECT_EQ(store_->read(), std::vector<TuningPreset>{changed});
  EXPECT_EQ(model().userPresets(), std::vector<TuningPreset>{changed});
  EXPECT_EQ(takeLog(), (Lines{"[log] Deleted \"Wet\"",
                              "[error] \"Wet\" was changed by another program and not deleted"}));
  model().undoPresets();  // nothing to bring back
  EXPECT_EQ(store_->read(), std::vector<TuningPreset>{changed});
}

TEST_F(ModelSharedPresets, AFileThatCannotBeReadStaysAndTheNextChangeWritesAll) {
  store_->save({wet_});
  start();
  const std::string content = contentOf(store_->fileURL());
  {
    const FileCalls calls([&](const FileCall& call, std::size_t) {
      return call.name == "read" && call.file == store_->fileURL() ? EIO : 0;
    });
    model().saveCurrentAsPreset("New");
  }
  EXPECT_EQ(takeLog(), (Lines{"[error] Could not save presets: " + store_->fileURL().string() +
                                  ": Input/output error",
                              "[log] Saved preset \"New\""}));
  EXPECT_EQ(contentOf(store_->fileURL()), content);
  EXPECT_EQ(shown(), (PresetNames{"Wet", "New"}));
  addElsewhere(dry_);
  awaitShown({"Wet", "Dry", "New"});
  model().saveCurrentAsPreset("Newer");
  EXPECT_EQ(stored(), (PresetNames{"Wet", "Dry", "New", "Newer"}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Saved preset \"Newer\""}));
}

TEST_F(ModelSharedPresets, AFileThatGotDamagedIsKeptAndReplacedByAllThatWasKnown) {
  store_->save({wet_, dry_});
  startWithoutBase();
  putFile(store_->fileURL(), "damaged");
  model().deletePreset(dry_);
  EXPECT_EQ(stored(), PresetNames{"Wet"});
  EXPECT_EQ(directory_.names().size(), 2U);
}

// Two other programs save at the same time as the window. Every tenth of their saves is killed.
TEST_F(ModelSharedPresets, NothingIsLostBetweenTwoProgramsAndTheWindow) {
  constexpr int savesOfEach = 400;
  constexpr int savesHere = 60;
  start();
  const auto lane = [&](unsigned seed) {
    return [this, seed]() -> std::string {
      return KilledCommands(seed).runEach(
          savesOfEach, [this](const std::string& name) { addElsewhere(presetOf(name, {})); });
    };
  };
  ChildProcess first(lane(1));
  ChildProcess second(lane(2));
  for (int i = 0; i < savesHere; ++i) {
    model().saveCurrentAsPreset("here" + std::to_string(i));
    QCoreApplication::processEvents();
  }
  // The event loop must run: the window may be queued for the lock, and only its timer goes on.
  QEventLoop loop;
  std::istringstream said;
  Thread waiting("waits", [&] {
    said.str(first.end() + second.end());
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });
  loop.exec();
  waiting.join();
  model().saveCurrentAsPreset("last");
  const PresetNames names = stored();
  const std::set<std::string> found(names.begin(), names.end());
  EXPECT_EQ(found.size(), names.size());
  int ended = 0;
  for (std::string name; said >> name; ++ended) EXPECT_TRUE(found.contains(name)) << name;
  EXPECT_GE(ended, 2 * savesOfEach * 9 / 10);
  for (int i = 0; i < savesHere; ++i) EXPECT_TRUE(found.contains("here" + std::to_string(i))) << i;
  EXPECT_EQ(names, shown());
  for (const std::string& line : takeLog()) EXPECT_TRUE(line.starts_with("[log]")) << line;
}

}  // namespace
}  // namespace quorvane
