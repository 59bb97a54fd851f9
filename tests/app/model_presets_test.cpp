#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <regex>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using std::filesystem::path;

constexpr const char* anyID = "00000000-0000-4000-8000-000000000000";

std::vector<std::string> namesOf(const std::vector<TuningPreset>& presets) {
  std::vector<std::string> names;
  names.reserve(presets.size());
  for (const TuningPreset& preset : presets) names.push_back(preset.name);
  return names;
}

// The content of a file with every id and every time replaced.
std::string comparableContentOf(const path& file) {
  static const std::regex id("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}");
  static const std::regex time("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z");
  return std::regex_replace(std::regex_replace(contentOf(file), id, "ID"), time, "TIME");
}

// The share file of the simulated base's menu.
constexpr const char* sharedFile = R"json({
  "base" : "CSL DD \/ GT DD Pro \/ ClubSport DD",
  "exportedAt" : "TIME",
  "format" : "quorvane-settings-1",
  "preset" : {
    "game" : "",
    "id" : "ID",
    "isBuiltIn" : false,
    "name" : "CSL DD \/ GT DD Pro \/ ClubSport DD, set C (Custom)",
    "notes" : "",
    "source" : "",
    "values" : {
      "ACP" : 1,
      "BLI" : 101,
      "DPR" : 50,
      "FEI" : 100,
      "FF" : 65,
      "FFS" : 1,
      "FOR" : 100,
      "FUL" : 0,
      "INT" : 11,
      "NDP" : 25,
      "NFR" : 10,
      "NIN" : 5,
      "SEN" : 900,
      "SHO" : 100,
      "SPR" : 100,
      "brF" : 50
    }
  }
})json";

class ModelPresets : public ModelTest {
 protected:
  ModelPresets() { putFile(file_, "not a directory"); }

  std::vector<std::string> storedNames() { return namesOf(store_->read()); }

  // Makes the store unusable: a parent of its path is a file.
  void breakStore() { store_.emplace(file_ / "presets.json"); }

  const path file_ = directory_ / "file";
  const std::string notADirectory_ = file_.string() + ": Not a directory";
};

class ModelSharing : public ModelPresets {};

class ModelImport : public ModelPresets {
 protected:
  // Writes a file with a list of these presets.
  path listOf(const std::vector<TuningPreset>& presets) { return fileWith(encodePresets(presets)); }

  path fileWith(const std::string& content) {
    path file = directory_ / "import.json";
    putFile(file, content);
    return file;
  }

  std::string file() { return (directory_ / "import.json").string(); }
};

class ModelExport : public ModelPresets {};

TEST_F(ModelPresets, TheMenuIsSavedAsAPresetOfTheUsers) {
  start();
  model().saveCurrentAsPreset("Wet \"GT7\"");
  EXPECT_EQ(takeLog(), (Lines{"[log] Saved preset \"Wet \"GT7\"\""}));
  ASSERT_EQ(model().userPresets().size(), 1U);
  const TuningPreset& preset = model().userPresets()[0];
  EXPECT_EQ(preset.name, "Wet \"GT7\"");
  EXPECT_EQ(preset.game, "Custom");
  EXPECT_EQ(preset.source + preset.notes, "");
  EXPECT_FALSE(preset.isBuiltIn);
  EXPECT_EQ(preset.values, TuningPreset::capture(model().product(), "", *model().tuning()).values);
  EXPECT_EQ(store_->read(), model().userPresets());
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelPresets, OfOneNameMayBeMany) {
  start();
  model().saveCurrentAsPreset("Wet");
  model().saveCurrentAsPreset("Wet");
  EXPECT_EQ(storedNames(), (std::vector<std::string>{"Wet", "Wet"}));
  EXPECT_NE(model().userPresets()[0].id, model().userPresets()[1].id);
}

TEST_F(ModelPresets, WithoutAMenuNothingIsSaved) {
  startWithoutBase();
  model().saveCurrentAsPreset("Wet");
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  settle();
  takeLog();
  model().saveCurrentAsPreset("Wet");
  EXPECT_EQ(model().userPresets().size(), 0U);
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_FALSE(std::filesystem::exists(store_->fileURL()));
}

TEST_F(ModelPresets, StayWhenTheyCannotBeWritten) {
  breakStore();
  start();
  model().saveCurrentAsPreset("Wet");
  EXPECT_EQ(takeLog(), (Lines{"[error] Could not save presets: " + notADirectory_,
                              "[log] Saved preset \"Wet\""}));
  EXPECT_EQ(namesOf(model().userPresets()), (std::vector<std::string>{"Wet"}));
  model().deletePreset(model().userPresets()[0]);
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Deleted \"Wet\"", "[error] Could not save presets: " + notADirectory_}));
  EXPECT_EQ(model().userPresets().size(), 0U);
}

TEST_F(ModelPresets, AreDeletedByTheirID) {
  const std::vector<TuningPreset> presets{presetOf("Wet", {}), presetOf("Dry", {}),
                                          presetOf("Wet", {})};
  store_->save(presets);
  startWithoutBase();
  TuningPreset renamed = presets[2];
  renamed.name = "another";
  changes_ = 0;
  model().deletePreset(renamed);
  EXPECT_EQ(changes_, 2);  // one for the log, one for the list
  EXPECT_EQ(model().userPresets(), (std::vector<TuningPreset>{presets[0], presets[1]}));
  EXPECT_EQ(store_->read(), model().userPresets());
  model().deletePreset(presetOf("Dry", {}));
  EXPECT_EQ(storedNames(), (std::vector<std::string>{"Wet", "Dry"}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Deleted \"Wet\""}));
}

TEST_F(ModelPresets, TheLastDeletedOneComesBackToItsPlaceWithItsID) {
  const std::vector<TuningPreset> presets{presetOf("Wet", {}), presetOf("Dry", {}),
                                          presetOf("Spa", {})};
  store_->save(presets);
  startWithoutBase();
  EXPECT_FALSE(model().deletedPreset());
  model().undoPresets();
  EXPECT_EQ(takeLog(), Lines{});
  model().deletePreset(presets[0]);
  model().deletePreset(presets[1]);
  EXPECT_EQ(model().deletedPreset(), presets[1]);
  model().undoPresets();
  EXPECT_EQ(model().userPresets(), (std::vector<TuningPreset>{presets[1], presets[2]}));
  EXPECT_EQ(store_->read(), model().userPresets());
  EXPECT_FALSE(model().deletedPreset());
  model().undoPresets();
  EXPECT_EQ(model().userPresets().size(), 2U);
  EXPECT_EQ(takeLog(), (Lines{"[log] Deleted \"Wet\"", "[log] Deleted \"Dry\"",
                              "[log] Brought back \"Dry\""}));
}

TEST_F(ModelPresets, EachChangeCanBeTakenBack) {
  const std::vector<TuningPreset> presets{presetOf("Wet", {{P::forceFeedback, 80}}),
                                          presetOf("Dry", {}), presetOf("Spa", {})};
  store_->save(presets);
  start();
  TuningPreset rain = presets[0];
  rain.name = "Rain";
  rain.notes = "Gain 78 %";
  using Where = PresetChange::Destination::Where;
  struct Case {
    std::function<void()> change;
    std::vector<std::string> names;
    Lines log;
  };
  const std::vector<Case> cases{
      {[&] { model().editPreset(presets[0], rain); },
       {"Rain", "Dry", "Spa"},
       {R"([log] Edited preset "Rain", before "Wet")", R"([log] "Wet" has its former texts)"}},
      {[&] { model().replacePreset(presets[0]); },
       {"Wet", "Dry", "Spa"},
       {R"([log] Replaced the values of preset "Wet")", R"([log] "Wet" has its former values)"}},
      {[&] { model().duplicatePreset(presets[0]); },
       {"Wet", "Wet copy", "Dry", "Spa"},
       {R"([log] Duplicated preset "Wet" as "Wet copy")", R"([log] Removed the copy "Wet copy")"}},
      {[&] {
         model().movePreset(presets[1], {Where::first, {}});
       },
       {"Dry", "Wet", "Spa"},
       {R"([log] Moved preset "Dry" to place 1 of 3)", R"([log] Moved preset "Dry" back)"}},
      {[&] {
         model().movePreset(presets[0], {Where::after, presets[2]});
       },
       {"Dry", "Spa", "Wet"},
       {R"([log] Moved preset "Wet" to place 3 of 3)", R"([log] Moved preset "Wet" back)"}},
      {[&] { model().deletePreset(presets[1]); },
       {"Wet", "Spa"},
       {R"([log] Deleted "Dry")", R"([log] Brought back "Dry")"}},
  };
  for (const Case& each : cases) {
    each.change();
    EXPECT_EQ(namesOf(model().userPresets()), each.names) << each.log[0];
    EXPECT_NE(model().userPresets(), presets) << each.log[0];
    EXPECT_EQ(store_->read(), model().userPresets());
    model().undoPresets();
    EXPECT_EQ(model().userPresets(), presets) << each.log[0];
    EXPECT_EQ(store_->read(), presets);
    EXPECT_EQ(takeLog(), each.log);
  }
  model().undoPresets();
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelPresets, ReplacedOnesHaveTheMenusValuesAndTheirOwnTexts) {
  TuningPreset wet = presetOf("Wet", {{P::forceFeedback, 80}});
  wet.notes = "Gain 78 %";
  store_->save({wet});
  start();
  model().replacePreset(wet);
  wet.values = TuningPreset::capture(model().product(), "", *model().tuning()).values;
  EXPECT_EQ(model().userPresets(), (std::vector<TuningPreset>{wet}));
}

TEST_F(ModelPresets, WithoutAMenuNothingIsReplaced) {
  store_->save({presetOf("Wet", {})});
  startWithoutBase();
  const std::vector<TuningPreset> presets = model().userPresets();
  model().replacePreset(presets[0]);
  EXPECT_EQ(model().userPresets(), presets);
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelPresets, WhatChangesNothingIsNoChange) {
  const std::vector<TuningPreset> presets{presetOf("Wet", {}), presetOf("Dry", {})};
  store_->save(presets);
  startWithoutBase();
  model().editPreset(presets[0], presets[0]);
  model().movePreset(presets[0], {PresetChange::Destination::Where::first, {}});
  model().movePreset(presetOf("Gone", {}), {});
  model().replacePreset(presetOf("Gone", {}));
  EXPECT_EQ(model().userPresets(), presets);
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelPresets, TheOneAddedLastIsKnown) {
  store_->save({presetOf("Wet", {})});
  start();
  EXPECT_FALSE(model().addedPreset());
  model().saveCurrentAsPreset("Dry");
  EXPECT_EQ(model().addedPreset(), model().userPresets()[1].id);
  model().duplicatePreset(model().userPresets()[0]);
  EXPECT_EQ(model().addedPreset(), model().userPresets()[1].id);
  const UUID wet = model().userPresets()[0].id;
  model().deletePreset(model().userPresets()[0]);
  EXPECT_NE(model().addedPreset(), wet);
  model().undoPresets();
  EXPECT_EQ(model().addedPreset(), wet);
}

TEST_F(ModelPresets, OneOfTheListItselfCanBeDeleted) {
  store_->save({presetOf("Wet", {}), presetOf("Dry", {})});
  startWithoutBase();
  model().deletePreset(model().userPresets()[0]);
  EXPECT_EQ(storedNames(), (std::vector<std::string>{"Dry"}));
}

TEST_F(ModelSharing, AsksForAPlaceUnderANameThatEveryFileSystemTakes) {
  start();
  model().shareCurrentSettings();
  EXPECT_EQ(panels_.takeRequests(),
            (Lines{"save: Share settings [Export] settings, CSL DD - GT DD Pro - ClubSport DD, set "
                   "C (Custom).quorvane"}));
}

TEST_F(ModelSharing, NamesTheSetThatIsActive) {
  struct Set {
    int number;
    bool isAdvanced;
    std::string name;
  };
  for (const auto& [number, isAdvanced, name] :
       std::vector<Set>{{1, false, "A (Auto Setup)"}, {3, true, "3"}}) {
    simulate([&, set = number, advanced = isAdvanced](SimulatedBase& simulated) {
      simulated.menu().select(set);
      if (advanced) simulated.menu().toggleMode();
    });
    start();
    model().shareCurrentSettings();
    EXPECT_EQ(panels_.takeRequests(),
              (Lines{"save: Share settings [Export] settings, CSL DD - GT DD Pro - ClubSport DD, "
                     "set " +
                     name + ".quorvane"}));
    end();
  }
}

TEST_F(ModelSharing, WritesTheMenuAsItIs) {
  start();
  const path file = directory_ / "my settings.quorvane";
  panels_.answerAtOnce(file);
  model().shareCurrentSettings();
  EXPECT_EQ(takeLog(), (Lines{"[log] Exported settings to " + file.string()}));
  EXPECT_EQ(comparableContentOf(file), sharedFile);
  EXPECT_EQ(model().userPresets().size(), 0U);
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelSharing, WritesTheMenuThatWasThereWhenItWasAskedFor) {
  start();
  model().shareCurrentSettings();
  base().turn(P::forceFeedback, 42);
  base().unplug();
  settle();
  const path file = directory_ / "shared.quorvane";
  panels_.answer(file);
  EXPECT_EQ(PresetStore::importPresets(file)[0].values.at("FF"), 65);
}

TEST_F(ModelSharing, ThatFailsIsAnError) {
  start();
  panels_.answerAtOnce(file_ / "shared.quorvane");
  model().shareCurrentSettings();
  EXPECT_EQ(takeLog(), (Lines{"[error] Export failed: " + (file_ / "shared.quorvane").string() +
                              ": Not a directory"}));
}

TEST_F(ModelSharing, WithoutABaseOrAMenuAsksForNothing) {
  startWithoutBase();
  model().shareCurrentSettings();
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  settle();
  takeLog();
  model().shareCurrentSettings();
  EXPECT_EQ(panels_.takeRequests(), Lines{});
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(ModelImport, AsksForAFile) {
  startWithoutBase();
  panels_.answerAtOnce(listOf({presetOf("Wet", {})}));
  model().importSettingsFile();
  EXPECT_EQ(panels_.takeRequests(), (Lines{"open: Import settings [Import] settings, no name"}));
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Imported \"Wet\" from " + file() + "; connect a base to apply it"}));
}

TEST_F(ModelImport, TakesEveryFormThatPresetsComeIn) {
  const std::string preset =
      R"({"id" : ")" + std::string(anyID) +
      R"(", "name" : "Wet", "game" : "GT7", "source" : "me", "notes" : "",)" +
      R"( "isBuiltIn" : true, "values" : {"FF" : 80}})";
  const std::vector<std::string> forms{
      R"({"format" : "quorvane-settings-1", "exportedAt" : "2026-03-01T09:30:00Z", "preset" : )" +
          preset + "}",
      "[" + preset + "]",
      preset,
  };
  start();
  for (const std::string& form : forms) {
    const std::size_t before = model().userPresets().size();
    model().importSettings(fileWith(form));
    EXPECT_EQ(takeLog(), (Lines{"[log] Imported \"Wet\" from " + file()}));
    ASSERT_EQ(model().userPresets().size(), before + 1);
    TuningPreset imported = model().userPresets().back();
    EXPECT_NE(imported.id.text(), anyID);
    imported.id = UUID();
    EXPECT_EQ(imported, (TuningPreset{UUID(), "Wet", "GT7", "me", "", {{"FF", 80}}, false}));
    EXPECT_EQ(model().requestedSection(), "Presets");
    model().setRequestedSection(std::nullopt);
  }
  EXPECT_EQ(store_->read(), model().userPresets());
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ModelImport, NamesTheFirstPresetAndCountsTheOthers) {
  const TuningPreset wet = presetOf("Wet", {});
  const TuningPreset dry = presetOf("Dry", {});
  startWithoutBase();
  model().importSettings(listOf({wet, dry}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Imported \"Wet\" from " + file() +
                              " and 1 more; connect a base to apply it"}));
  base();
  settle();
  takeLog();
  model().importSettings(listOf({dry, wet, wet}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Imported \"Dry\" from " + file() + " and 2 more"}));
  EXPECT_EQ(storedNames(), (std::vector<std::string>{"Wet", "Dry", "Dry", "Wet", "Wet"}));
}

TEST_F(ModelImport, OfAnEmptyListIsNoImport) {
  startWithoutBase();
  model().importSettings(fileWith("[]"));
  EXPECT_EQ(takeLog(), (Lines{"[log] Imported nothing: there are no presets in " + file()}));
  EXPECT_FALSE(model().requestedSection());
  EXPECT_FALSE(std::filesystem::exists(store_->fileURL()));
}

TEST_F(ModelImport, OfAFileThatIsNotReadableIsAnError) {
  startWithoutBase();
  const std::string missing = (directory_ / "missing").string();
  model().importSettings(missing);
  EXPECT_EQ(takeLog(),
            (Lines{"[error] Could not import " + missing + ": No such file or directory"}));
  model().importSettings(directory_.path());
  EXPECT_EQ(takeLog(),
            (Lines{"[error] Could not import " + directory_.path().string() + ": Is a directory"}));
  for (const char* const content : {"", "{", "7", "{}", "[{}]", "not JSON"}) {
    SCOPED_TRACE(content);
    model().importSettings(fileWith(content));
    const Lines log = takeLog();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_TRUE(log[0].starts_with("[error] Could not import " + file() + ": ")) << log[0];
  }
  EXPECT_FALSE(model().requestedSection());
  EXPECT_EQ(model().userPresets().size(), 0U);
  EXPECT_FALSE(std::filesystem::exists(store_->fileURL()));
}

TEST_F(ModelImport, IsKeptForTheRunWhenItCannotBeWritten) {
  breakStore();
  startWithoutBase();
  model().importSettings(listOf({presetOf("Wet", {})}));
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Imported \"Wet\" from " + file() + "; connect a base to apply it",
                   "[error] Could not save presets: " + notADirectory_}));
  EXPECT_EQ(model().userPresets().size(), 1U);
  EXPECT_EQ(model().requestedSection(), "Presets");
}

TEST_F(ModelImport, TakesBackWhatWasShared) {
  start();
  const path file = directory_ / "shared.quorvane";
  panels_.answerAtOnce(file);
  model().shareCurrentSettings();
  takeLog();
  model().importSettings(file);
  EXPECT_EQ(takeLog(), (Lines{"[log] Imported \"CSL DD / GT DD Pro / ClubSport DD, set C "
                              "(Custom)\" from " +
                              file.string()}));
  model().stagePreset(model().userPresets()[0]);
  EXPECT_EQ(takeLog(), (Lines{"[log] \"CSL DD / GT DD Pro / ClubSport DD, set C (Custom)\" matches "
                              "the current values"}));
}

TEST_F(ModelImport, ARequestForASectionIsToldOnceAndWithdrawn) {
  startWithoutBase();
  changes_ = 0;
  model().setRequestedSection("Log");
  model().setRequestedSection("Log");
  EXPECT_EQ(changes_, 1);
  EXPECT_EQ(model().requestedSection(), "Log");
  model().setRequestedSection(std::nullopt);
  EXPECT_EQ(changes_, 2);
  EXPECT_FALSE(model().requestedSection());
}

TEST_F(ModelExport, WritesTheUsersPresets) {
  const path file = directory_ / "export.json";
  startWithoutBase();
  panels_.answerAtOnce(file);
  model().exportPresets();
  EXPECT_EQ(panels_.takeRequests(),
            (Lines{"save: Export presets [Export] presets, quorvane-presets.json"}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Exported 0 presets to " + file.string()}));

  const path two = directory_ / "two.json";
  putFile(two, encodePresets({presetOf("Wet", {}), presetOf("Dry", {})}));
  model().importSettings(two);
  takeLog();
  panels_.answerAtOnce(file);
  model().exportPresets();
  EXPECT_EQ(takeLog(), (Lines{"[log] Exported 2 presets to " + file.string()}));
  EXPECT_EQ(contentOf(file), encodePresets(model().userPresets()));

  model().deletePreset(model().userPresets()[0]);
  EXPECT_EQ(takeLog(), (Lines{"[log] Deleted \"Wet\""}));
  panels_.answerAtOnce(file);
  model().exportPresets();
  EXPECT_EQ(takeLog(), (Lines{"[log] Exported 1 preset to " + file.string()}));
}

TEST_F(ModelExport, WritesThePresetsThatAreThereWhenThePanelAnswers) {
  start();
  model().exportPresets();
  model().saveCurrentAsPreset("Wet");
  const path file = directory_ / "export.json";
  panels_.answer(file);
  EXPECT_EQ(namesOf(PresetStore::importPresets(file)), (std::vector<std::string>{"Wet"}));
}

TEST_F(ModelExport, ThatFailsIsAnError) {
  startWithoutBase();
  panels_.answerAtOnce(file_ / "export.json");
  model().exportPresets();
  EXPECT_EQ(takeLog(), (Lines{"[error] Export failed: " + (file_ / "export.json").string() +
                              ": Not a directory"}));
}

TEST_F(ModelExport, APanelThatNeverAnswersChangesNothing) {
  start();
  model().shareCurrentSettings();
  model().importSettingsFile();
  model().exportPresets();
  settle();
  EXPECT_EQ(panels_.open(), 3U);
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_FALSE(model().busy());
}

TEST_F(ModelExport, APanelThatAnswersAfterTheModelIsGoneDoesNothing) {
  start();
  model().shareCurrentSettings();
  model().importSettingsFile();
  model().exportPresets();
  end();
  const auto before = directory_.names();
  while (panels_.open() > 0) panels_.answer(directory_ / "late.json");
  EXPECT_EQ(directory_.names(), before);
}

}  // namespace
}  // namespace quorvane
