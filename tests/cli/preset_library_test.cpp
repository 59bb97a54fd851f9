#include "cli/preset_library.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/cli/preset_fixture.h"

namespace quorvane {
namespace {

class Library : public PresetTest {
 protected:
  PresetLibrary library() { return PresetLibrary(world_); }
  std::string messages() { return err_.text(); }

  CapturedStream out_;
  CapturedStream err_;
  const World world_{world(out_.file(), err_.file())};
  const TuningPreset first_ = ownPreset(firstID, "First", {{"FF", 80}});
  const TuningPreset second_ = ownPreset(secondID, "Second", {{"SEN", 900}});
};

TEST_F(Library, HasTheBuiltInPresetsFirst) {
  store_.save({first_, second_});
  std::vector<TuningPreset> wanted = TuningPreset::builtIn();
  wanted.push_back(first_);
  wanted.push_back(second_);
  EXPECT_EQ(library().all(), wanted);
  EXPECT_EQ(library().own(), (std::vector<TuningPreset>{first_, second_}));
  EXPECT_EQ(library().named("second"), second_);
  EXPECT_EQ(library().named(factoryName()), TuningPreset::builtIn().front());
  EXPECT_EQ(library().named(std::vector<std::string>{"Second", "FIRST"}),
            (std::vector<TuningPreset>{second_, first_}));
  EXPECT_TRUE(library().isReadable());
  EXPECT_EQ(messages(), "");
}

TEST_F(Library, WithoutAFileHasTheBuiltInPresetsOnly) {
  EXPECT_EQ(library().all(), TuningPreset::builtIn());
  EXPECT_TRUE(library().isReadable());
  EXPECT_EQ(messages(), "");
  EXPECT_FALSE(std::filesystem::exists(store_.fileURL().parent_path()));
}

TEST_F(Library, SavesWhatWasAddedAndRemoved) {
  store_.save({first_});
  PresetLibrary changed = library();
  changed.add({second_});
  changed.remove(first_);
  EXPECT_EQ(storeText(), encodePresets({first_}));
  changed.save();
  EXPECT_EQ(storeText(), encodePresets({second_}));
  EXPECT_EQ(messages(), "");
}

TEST_F(Library, RemovesOneOfSeveralWithTheSameId) {
  TuningPreset twin = second_;
  twin.id = first_.id;
  store_.save({first_, twin});
  PresetLibrary changed = library();
  changed.remove(twin);
  changed.save();
  EXPECT_EQ(storeText(), encodePresets({first_}));
}

TEST_F(Library, WhateverStandsInTheStoreIsTheUsersOwn) {
  TuningPreset foreign = first_;
  foreign.isBuiltIn = true;
  damageStore(encodePresets({foreign}));
  EXPECT_EQ(library().own(), std::vector<TuningPreset>{first_});
  library().save();
  EXPECT_EQ(storeText(), encodePresets({first_}));
}

TEST_F(Library, OfTwoThatReadBeforeEitherSavedTheLastWinsWhole) {
  PresetLibrary one = library();
  PresetLibrary other = library();
  one.add({first_});
  one.save();
  other.add({second_});
  other.save();
  EXPECT_EQ(storeText(), encodePresets({second_}));
}

TEST_F(Library, AStoreThatCannotBeReadCountsAsEmpty) {
  damageStore();
  EXPECT_EQ(library().all(), TuningPreset::builtIn());
  EXPECT_FALSE(library().isReadable());
  EXPECT_EQ(messages(), unreadable() + unreadable());
}

TEST_F(Library, SavingKeepsAStoreThatCannotBeRead) {
  damageStore("no presets");
  const std::string warning = unreadable();
  PresetLibrary changed = library();
  changed.add({first_});
  changed.save();
  EXPECT_EQ(messages(), warning + kept());
  EXPECT_EQ(storeText(), encodePresets({first_}));
  std::vector<std::string> others;
  for (const auto& entry : std::filesystem::directory_iterator(store_.fileURL().parent_path())) {
    if (entry.path() != store_.fileURL()) others.push_back(entry.path());
  }
  ASSERT_EQ(others.size(), 1U);
  EXPECT_EQ(others[0].substr(0, storePath().size() + 9), storePath() + ".corrupt-");
  EXPECT_EQ(contentOf(others[0]), "no presets");
}

TEST_F(Library, ADirectoryInPlaceOfTheStoreCannotBeReplaced) {
  std::filesystem::create_directories(store_.fileURL());
  PresetLibrary changed = library();
  EXPECT_THROW(changed.save(), FileError);
  EXPECT_EQ(messages(), "Your own presets cannot be read: " + storePath() + ": Is a directory\n");
}

}  // namespace
}  // namespace quorvane
