#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/app/model_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// Settings that the model reads to be looked at.
class ModelSettings : public ModelTest {
 protected:
  std::string fileOf(const std::vector<TuningPreset>& presets) {
    const auto file = directory_ / "read.json";
    putFile(file, encodePresets(presets));
    return file.string();
  }

  // The names of the presets in the file that the panel answers with.
  Lines read(const std::string& file) {
    Lines names;
    panels_.answerAtOnce(file);
    model().readSettingsFile([&](const std::vector<TuningPreset>& presets) {
      for (const TuningPreset& preset : presets) names.push_back(preset.name);
    });
    return names;
  }
};

TEST_F(ModelSettings, AFileIsReadWithoutAddingItsPresets) {
  start();
  EXPECT_EQ(read(fileOf({presetOf("Spa", {{P::forceFeedback, 80}}), presetOf("Monza", {})})),
            (Lines{"Spa", "Monza"}));
  EXPECT_EQ(panels_.takeRequests(), Lines{"open: Compare settings [Compare] settings, no name"});
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_TRUE(model().userPresets().empty());
}

TEST_F(ModelSettings, AFileThatCannotBeReadIsAnError) {
  start();
  const std::string missing = (directory_ / "missing").string();
  EXPECT_EQ(read(missing), Lines{});
  EXPECT_EQ(takeLog(),
            Lines{"[error] Could not import " + missing + ": No such file or directory"});
  const std::string empty = fileOf({});
  EXPECT_EQ(read(empty), Lines{});
  EXPECT_EQ(takeLog(), Lines{"[error] Imported nothing: there are no presets in " + empty});
}

TEST_F(ModelSettings, ATextHasSettingsOrIsAnError) {
  start();
  const auto settings = model().settingsIn("FF: 80, hello");
  ASSERT_TRUE(settings);
  ASSERT_EQ(settings->presets.size(), 1U);
  EXPECT_EQ(settings->presets.front().name, "");
  EXPECT_EQ(settings->presets.front().values, (TuningPreset::Values{{"FF", 80}}));
  EXPECT_EQ(settings->notUnderstood, Lines{"hello"});
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_FALSE(model().settingsIn("hello"));
  EXPECT_EQ(takeLog(),
            Lines{"[error] Could not import the pasted text: There is no setting in it"});
}

TEST_F(ModelSettings, ATextMayBeTheContentOfASettingsFile) {
  start();
  const auto settings = model().settingsIn(encodePresets(
      {presetOf("Spa", {{P::forceFeedback, 80}}), presetOf("Monza", {{P::forceFeedback, 90}})}));
  ASSERT_TRUE(settings);
  ASSERT_EQ(settings->presets.size(), 2U);
  EXPECT_EQ(settings->presets.front().name, "Spa");
  EXPECT_EQ(settings->presets.back().values, (TuningPreset::Values{{"FF", 90}}));
  EXPECT_EQ(settings->notUnderstood, Lines{});
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_FALSE(model().settingsIn("[]"));
  EXPECT_EQ(takeLog(),
            Lines{"[error] Could not import the pasted text: There is no setting in it"});
  EXPECT_FALSE(model().settingsIn("{\"name\": "));
  const Lines lines = takeLog();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines.front().find("[error] Could not import the pasted text"), 0U) << lines.front();
}

TEST_F(ModelSettings, ThePresetThatWasImportedIsKnownUntilTheNextLine) {
  start();
  EXPECT_FALSE(model().importedPreset());
  model().importSettings(fileOf({presetOf("Spa", {{P::forceFeedback, 80}})}));
  ASSERT_TRUE(model().importedPreset());
  EXPECT_EQ(model().importedPreset()->name, "Spa");
  model().saveCurrentAsPreset("Monza");
  EXPECT_FALSE(model().importedPreset());
  model().importSettings(fileOf({presetOf("Spa", {}), presetOf("Monza", {})}));
  EXPECT_FALSE(model().importedPreset());
}

TEST_F(ModelSettings, TheHistoryIsReadBehindWhatRuns) {
  start();
  model().stage(P::forceFeedback, 80);
  model().saveStaged();
  std::optional<HistoryContents> contents;
  std::string reason = "none yet";
  model().readHistory([&](const HistoryContents& read, const std::string& failure) {
    contents = read;
    reason = failure;
  });
  waitUntil([&] { return contents.has_value(); });
  ASSERT_EQ(contents->records.size(), 1U);
  EXPECT_EQ(contents->records.front().wanted.front().value, 80);
  EXPECT_EQ(reason, "");
  settle();
}

TEST_F(ModelSettings, WithoutABaseThereIsNoHistory) {
  startWithoutBase();
  bool isRead = false;
  model().readHistory([&](const HistoryContents&, const std::string&) { isRead = true; });
  settle();
  EXPECT_FALSE(isRead);
}

}  // namespace
}  // namespace quorvane
