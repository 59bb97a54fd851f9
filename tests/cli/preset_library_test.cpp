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

TEST_F(Library, SavesWhatIsAddedAndRemoved) {
  store_.save({first_});
  PresetLibrary changed = PresetLibrary::withAdded(world_, {second_});
  EXPECT_EQ(changed.own(), (std::vector<TuningPreset>{first_, second_}));
  EXPECT_EQ(storeText(), encodePresets({first_, second_}));
  changed.remove(first_);
  EXPECT_EQ(changed.own(), std::vector<TuningPreset>{second_});
  EXPECT_EQ(storeText(), encodePresets({second_}));
  EXPECT_EQ(messages(), "");
}

TEST_F(Library, RemovesOneOfSeveralWithTheSameId) {
  TuningPreset twin = second_;
  twin.id = first_.id;
  store_.save({first_, twin});
  library().remove(twin);
  EXPECT_EQ(storeText(), encodePresets({first_}));
}

TEST_F(Library, WhateverStandsInTheStoreIsTheUsersOwn) {
  TuningPreset foreign = first_;
  foreign.isBuiltIn = true;
  damageStore(encodePresets({foreign}));
  EXPECT_EQ(library().own(), std::vector<TuningPreset>{first_});
  PresetLibrary::withAdded(world_, {second_});
  EXPECT_EQ(storeText(), encodePresets({first_, second_}));
}

TEST_F(Library, OfTwoThatReadBeforeEitherChangedNeitherUndoesTheOther) {
  store_.save({first_});
  PresetLibrary one = library();
  PresetLibrary other = library();
  PresetLibrary::withAdded(world_, {second_});
  one.remove(first_);
  EXPECT_EQ(storeText(), encodePresets({second_}));
  other.remove(first_);  // removed already, which is no error
  EXPECT_EQ(storeText(), encodePresets({second_}));
}

TEST_F(Library, APresetThatAnotherProgramHasChangedIsNotRemoved) {
  store_.save({first_});
  PresetLibrary one = library();
  TuningPreset changed = first_;
  changed.values = {{"FF", 10}};
  store_.save({changed});
  EXPECT_THROW(one.remove(first_), FileError);
  EXPECT_EQ(storeText(), encodePresets({changed}));
}

TEST_F(Library, AStoreThatCannotBeReadCountsAsEmpty) {
  damageStore();
  EXPECT_EQ(library().all(), TuningPreset::builtIn());
  EXPECT_FALSE(library().isReadable());
  EXPECT_EQ(messages(), unreadable() + unreadable());
}

TEST_F(Library, AddingToADamagedStoreKeepsItAndNamesTheFile) {
  damageStore("no presets");
  const std::string warning = unreadable();
  const PresetLibrary changed = PresetLibrary::withAdded(world_, {first_});
  EXPECT_EQ(changed.own(), std::vector<TuningPreset>{first_});
  EXPECT_EQ(storeText(), encodePresets({first_}));
  ASSERT_EQ(keptFiles().size(), 1U);
  EXPECT_EQ(messages(), warning + kept());
  EXPECT_EQ(contentOf(keptFiles()[0]), "no presets");
}

TEST_F(Library, RemovingFromADamagedStoreFailsAndLeavesIt) {
  store_.save({first_});
  PresetLibrary changed = library();
  damageStore("no presets");
  EXPECT_THROW(changed.remove(first_), DecodingError);
  EXPECT_EQ(storeText(), "no presets");
  EXPECT_TRUE(keptFiles().empty());
}

TEST_F(Library, ADirectoryInPlaceOfTheStoreCannotBeReplaced) {
  std::filesystem::create_directories(store_.fileURL());
  EXPECT_THROW(PresetLibrary::withAdded(world_, {first_}), FileError);
  EXPECT_EQ(library().own().size(), 0U);
  EXPECT_EQ(messages(), "Your own presets cannot be read: " + storePath() + ": Is a directory\n");
}

}  // namespace
}  // namespace quorvane
