#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/button.h"
#include "ui/presets/preset_row.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using std::filesystem::path;

constexpr const char* toSetA =
    "Values will be written to set A (Auto Setup) and verified one by one. This is the Auto set, "
    "so they will not survive a power cycle.";
constexpr const char* toSetC = "Values will be written to set C (Custom) and verified one by one.";

class Presets : public WindowTest {
 protected:
  void openPresets() {
    open();
    visit(Section::presets);
  }

  // The rows of a group from top to bottom.
  std::vector<PresetRow*> rows(const std::string& group) {
    const auto found = find(group).findChildren<PresetRow*>();
    std::vector<PresetRow*> rows(found.begin(), found.end());
    std::sort(rows.begin(), rows.end(),
              [](const QWidget* a, const QWidget* b) { return a->y() < b->y(); });
    return rows;
  }
  PresetRow& builtIn(std::size_t number) { return *rows("builtInPresets").at(number); }
  PresetRow& mine(std::size_t number) { return *rows("minePresets").at(number); }

  Lines names(const std::string& group) {
    Lines names;
    for (const PresetRow* const row : rows(group))
      names.push_back(textOf(find("presetName", *row)));
    return names;
  }

  std::string name(const std::string& widget, const PresetRow& row) {
    return find(widget, row).accessibleName().toStdString();
  }
  using WindowTest::name;

  Button& applyOf(const PresetRow& row) { return find<Button>("applyButton", row); }

  void give(const std::string& name) {
    focus("presetNameField");
    find<QLineEdit>("presetNameField").selectAll();
    type(name);
  }

  // Saves the menu under a name, and drops the log lines.
  void own(const std::string& name) {
    model().saveCurrentAsPreset(name);
    settle();
    takeLog();
  }

  std::string question() { return textOf(find("dialogTitle", *dialog())); }
  std::string message() { return textOf(find("dialogMessage", *dialog())); }
};

TEST_F(Presets, GroupsComeInOrder) {
  openPresets();
  Lines captions;
  for (const char* const group : {"builtInPresets", "minePresets"}) {
    captions.push_back(name(group));
  }
  EXPECT_EQ(captions, (Lines{"Built in", "Mine"}));
  EXPECT_LT(find("builtInPresets").y(), find("minePresets").y());
  EXPECT_EQ(text("savePresetCaption"), "Save the current menu as a preset");
  EXPECT_EQ(text("savePresetButton"), "Save");
  EXPECT_EQ(text("importButton"), "Import…");
  EXPECT_EQ(text("exportButton"), "Export mine…");
  EXPECT_EQ(find<QLineEdit>("presetNameField").placeholderText(), QStringLiteral("Preset name"));
}

TEST_F(Presets, TheCatalogueIsListedInItsOrder) {
  openPresets();
  EXPECT_EQ(
      names("builtInPresets"),
      (Lines{"Fanatec factory defaults", "Fanatec recommended, Gran Turismo 7",
             "Redline Lab 2025, Gran Turismo 7 (8 Nm)", "Gearwerk 2025, Gran Turismo 7 (8 Nm)"}));
  Lines sources;
  for (const PresetRow* const row : rows("builtInPresets")) {
    sources.push_back(textOf(find("presetSource", *row)));
  }
  EXPECT_EQ(sources, (Lines{"Source: Fanatec help center, tuning menu article",
                            "Source: Fanatec forum thread", "Source: redlinelab.example",
                            "Source: gearwerk.example, March 2025"}));
}

TEST_F(Presets, ARowSumsItsValuesUp) {
  openPresets();
  EXPECT_EQ(find("presetValues", builtIn(2)).accessibleName().toStdString(),
            "Sensitivity AUTO, Force feedback strength 100 %, Force feedback scaling PEA, Force "
            "effect strength 100 %, Spring effect strength 0 %, Damper effect strength 50 %, "
            "Natural damper 15 %, Natural friction 10 %, Force effect intensity 100 %, FFB "
            "interpolation filter 3, Natural inertia 5 %");
}

TEST_F(Presets, ARowNamesGameAndNotes) {
  openPresets();
  own("Wet");
  struct Case {
    const PresetRow& row;
    std::string game;
    bool hasNotes;
  };
  const std::vector<Case> cases{{builtIn(0), "", true},  // its game is "Any"
                                {builtIn(1), "Gran Turismo 7", true},
                                {mine(0), "Custom", false}};
  for (const auto& [row, game, hasNotes] : cases) {
    const auto* const shown = row.findChild<QLabel*>(QStringLiteral("presetGame"));
    EXPECT_EQ(shown == nullptr ? "" : textOf(*shown), game);
    const auto* const notes = row.findChild<QLabel*>(QStringLiteral("presetNotes"));
    ASSERT_EQ(notes != nullptr, hasNotes) << game;
    const std::string values = name("presetValues", row);
    EXPECT_EQ(row.accessibleDescription().toStdString(),
              hasNotes ? row.preset().notes + "\n" + values : values);
    if (hasNotes) {
      EXPECT_EQ(textOf(*notes), row.preset().notes);
    }
  }
}

TEST_F(Presets, LoadFillsTheValuesInAndShowsThem) {
  openPresets();
  own("Wet");
  takeTranscript();
  click(find("loadButton", builtIn(2)));
  settle();
  EXPECT_TRUE(isVisible("tuningPage"));
  EXPECT_EQ(staged(), "SEN=0 FF=100 SPR=0 NDP=15 INT=3");
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Loaded \"Redline Lab 2025, Gran Turismo 7 (8 Nm)\": 5 values to save"}));
}

TEST_F(Presets, OnesOwnAreLoadedToo) {
  openPresets();
  stage(P::forceFeedback, 80);
  own("Wet");
  click(find("loadButton", mine(0)));
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] \"Wet\" matches the current values"}));
}

TEST_F(Presets, ABadgeFollowsTheBase) {
  openPresets();
  own("Wet");
  const auto badge = [this] { return name("presetBadge", mine(0)); };
  EXPECT_EQ(badge(), "On the base now");
  Bytes report;
  simulate([&](SimulatedBase& simulated) {
    simulated.menu().put(P::naturalDamper, 40);
    report = simulated.menu().report();
  });
  base().sendReport(report);
  settle();
  EXPECT_EQ(badge(), "1 differs");
  base().unplug();
  settle();
  EXPECT_EQ(badge(), "");
}

TEST_F(Presets, BadgesCompareWithTheBaseNotWithEdits) {
  openPresets();
  own("Wet");
  stage(P::forceFeedback, 10);
  settle();
  EXPECT_EQ(name("presetBadge", mine(0)), "On the base now");
}

TEST_F(Presets, TheCodesStandAboveTheValues) {
  openPresets();
  own("Wet");
  EXPECT_EQ(name("presetCodes"), "On the base now, set C");
  EXPECT_NE(description("presetCodes").find("brF 50"), std::string::npos);
  EXPECT_GT(find("presetCodes").height(), 20);
  base().unplug();
  settle();
  EXPECT_EQ(name("presetCodes"), "Settings");
}

TEST_F(Presets, NarrowRowsHaveTheBadgeBeforeTheGame) {
  openPresets();
  own("Wet");
  EXPECT_TRUE(find("presetBadge", mine(0)).isVisible());
  EXPECT_FALSE(find("narrowPresetBadge", mine(0)).isVisible());
  window().resize(860, 560);
  settle();
  EXPECT_FALSE(find("presetBadge", mine(0)).isVisible());
  EXPECT_TRUE(find("narrowPresetBadge", mine(0)).isVisible());
}

TEST_F(Presets, ValuesThatHaveNoRoomGoOnInAnotherLine) {
  openPresets();
  const QWidget& strip = find("presetValues", builtIn(0));
  const int line = strip.heightForWidth(16 * 50);
  EXPECT_EQ(strip.height(), line);
  EXPECT_EQ(strip.heightForWidth(16 * 38), line);
  EXPECT_GT(strip.heightForWidth(15 * 38), 2 * line - 1);
  EXPECT_GT(strip.heightForWidth(1), 16 * line - 1);
}

TEST_F(Presets, RowsAreMadeAnewForAnotherProduct) {
  useRealTime();
  attach(0x0001);
  attach(0x0020);
  openPresets();
  own("Wet");
  const auto summary = [this] {
    return find("presetValues", builtIn(3)).accessibleName().toStdString();
  };
  EXPECT_EQ(summary().find("Natural damper"), std::string::npos);
  device(0).unplug();
  settle();
  EXPECT_NE(summary().find("Natural damper 70 %"), std::string::npos);
  EXPECT_EQ(names("minePresets"), (Lines{"Wet"}));
}

TEST_F(Presets, WithoutAnyOfTheirOwnPeopleReadAHint) {
  openPresets();
  EXPECT_EQ(text("noPresetsHint"), "Save the current menu below to create your first preset.");
  EXPECT_TRUE(isVisible("noPresetsHint"));
  EXPECT_TRUE(rows("minePresets").empty());
  own("Wet");
  EXPECT_FALSE(isVisible("noPresetsHint"));
  EXPECT_EQ(names("minePresets"), (Lines{"Wet"}));
  EXPECT_EQ(textOf(find("presetSource", mine(0))), "Source: none");
}

TEST_F(Presets, OnlyOnesOwnCanBeDeleted) {
  openPresets();
  own("Wet");
  own("Dry");
  for (const PresetRow* const row : rows("builtInPresets")) {
    EXPECT_EQ(row->findChild<QWidget*>(QStringLiteral("trashButton")), nullptr);
  }
  for (const PresetRow* const row : rows("minePresets")) {
    EXPECT_TRUE(find("trashButton", *row).isVisible());
    EXPECT_EQ(stateOf(find("trashButton", *row)), "enabled: Delete this preset");
  }
  EXPECT_EQ(find("trashButton", mine(1)).accessibleName(), QStringLiteral("Delete preset, Dry"));
}

TEST_F(Presets, TheTrashDeletesItsPreset) {
  openPresets();
  for (const char* const name : {"Wet", "Dry", "Night"}) own(name);
  click(find("trashButton", mine(1)));
  settle();
  EXPECT_EQ(names("minePresets"), (Lines{"Wet", "Night"}));
  EXPECT_EQ(store_->read().size(), 2U);
  click(find("trashButton", mine(0)));
  click(find("trashButton", mine(0)));
  EXPECT_TRUE(isVisible("noPresetsHint"));
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Deleted \"Dry\"", "[log] Deleted \"Wet\"", "[log] Deleted \"Night\""}));
}

TEST_F(Presets, OfTwoWithOneNameTheChosenIsDeleted) {
  openPresets();
  own("Wet");
  stage(P::forceFeedback, 80);
  own("Wet");
  const UUID first = model().userPresets()[0].id;
  click(find("trashButton", mine(1)));
  ASSERT_EQ(model().userPresets().size(), 1U);
  EXPECT_EQ(model().userPresets()[0].id, first);
}

TEST_F(Presets, RowsThatStayAreKept) {
  openPresets();
  for (const char* const name : {"Wet", "Dry", "Night"}) own(name);
  const PresetRow* const first = &mine(0);
  const PresetRow* const last = &mine(2);
  applyOf(*last).setFocus();
  click(find("trashButton", mine(1)));
  EXPECT_EQ(&mine(0), first);
  EXPECT_EQ(&mine(1), last);
  own("Spa");
  EXPECT_EQ(&mine(0), first);
  EXPECT_EQ(names("minePresets"), (Lines{"Wet", "Night", "Spa"}));
}

TEST_F(Presets, ADeletedPresetCanBeBroughtBack) {
  openPresets();
  for (const char* const name : {"Wet", "Dry", "Night"}) own(name);
  const UUID id = model().userPresets()[1].id;
  for (const bool byKey : {false, true}) {
    EXPECT_FALSE(isVisible("undoDeleteLink"));
    click(find("trashButton", mine(1)));
    settle();
    EXPECT_EQ(text("statusLine"), "Deleted \"Dry\"");
    ASSERT_TRUE(isVisible("undoDeleteLink"));
    if (byKey) {
      press(Qt::Key_Z, Qt::ControlModifier);
    } else {
      click("undoDeleteLink");
    }
    settle();
    EXPECT_EQ(names("minePresets"), (Lines{"Wet", "Dry", "Night"}));
    EXPECT_EQ(model().userPresets()[1].id, id);
    EXPECT_FALSE(isVisible("undoDeleteLink"));
  }
}

TEST_F(Presets, TheLinkToBringAPresetBackGoesWithTheNextLine) {
  openPresets();
  own("Wet");
  click(find("trashButton", mine(0)));
  settle();
  model().selectSlot(1);
  settle();
  EXPECT_FALSE(isVisible("undoDeleteLink"));
  press(Qt::Key_Z, Qt::ControlModifier);
  settle();
  EXPECT_EQ(names("minePresets"), (Lines{"Wet"}));
}

TEST_F(Presets, InATextFieldTheKeyBelongsToTheField) {
  openPresets();
  own("Wet");
  click(find("trashButton", mine(0)));
  settle();
  give("Spa");
  press(Qt::Key_Z, Qt::ControlModifier);
  settle();
  EXPECT_TRUE(model().userPresets().empty());
}

TEST_F(Presets, NamesMaySpanLinesAndShowInOne) {
  openPresets();
  own("Wet\nSpa");
  EXPECT_EQ(names("minePresets"), (Lines{"Wet Spa"}));
}

TEST_F(Presets, ANameOfBlanksCannotBeSaved) {
  openPresets();
  EXPECT_EQ(state("savePresetButton"), "disabled: Type a name first");
  give("   ");
  EXPECT_EQ(state("savePresetButton"), "disabled: Type a name first");
  press(Qt::Key_Return);
  EXPECT_TRUE(model().userPresets().empty());
  type("x");
  EXPECT_EQ(state("savePresetButton"), "enabled");
}

TEST_F(Presets, ANameIsTrimmedAndTheFieldCleared) {
  openPresets();
  give("  Spa, wet ");
  click("savePresetButton");
  settle();
  EXPECT_EQ(names("minePresets"), (Lines{"Spa, wet"}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Saved preset \"Spa, wet\""}));
  EXPECT_EQ(text("presetNameField"), "");
  EXPECT_EQ(state("savePresetButton"), "disabled: Type a name first");
}

TEST_F(Presets, EnterInTheFieldSaves) {
  openPresets();
  give("Wet");
  press(Qt::Key_Return);
  EXPECT_EQ(names("minePresets"), (Lines{"Wet"}));
  EXPECT_EQ(focused(), "presetNameField");
  press(Qt::Key_Return);
  EXPECT_EQ(model().userPresets().size(), 1U);
}

TEST_F(Presets, WithoutAMenuThereIsNothingToSave) {
  openWithoutBase();
  visit(Section::presets);
  const char* const reason = "disabled: Connect a base first: its menu is what gets saved";
  give("Wet");
  EXPECT_EQ(state("savePresetButton"), reason);
  press(Qt::Key_Return);
  EXPECT_TRUE(model().userPresets().empty());
  EXPECT_EQ(text("presetNameField"), "Wet");
  base();
  settle();
  EXPECT_EQ(state("savePresetButton"), "enabled");
}

TEST_F(Presets, WhatIsTypedStaysWhenOtherSectionsAreVisited) {
  openPresets();
  give("Wet");
  visit(Section::log);
  visit(Section::presets);
  EXPECT_EQ(text("presetNameField"), "Wet");
}

TEST_F(Presets, ButtonsAreAvailableWhenTheyCanDoSomething) {
  openWithoutBase();
  visit(Section::presets);
  const std::string help = "Load a settings file someone shared with you";
  const std::string none = "disabled: There is no preset of your own to export yet";
  EXPECT_EQ(stateOf(applyOf(builtIn(0))), std::string("disabled: ") + connectReason);
  EXPECT_EQ(state("importButton"), "enabled: " + help);
  EXPECT_EQ(state("exportButton"), none);
  base();
  settle();
  own("Wet");
  EXPECT_EQ(stateOf(applyOf(builtIn(0))), "enabled");
  EXPECT_EQ(stateOf(applyOf(mine(0))), "enabled");
  EXPECT_EQ(state("exportButton"), "enabled: Write all your presets to one file");
  whileReading([this] {
    const std::string wait = std::string("disabled: ") + waitReason;
    EXPECT_EQ(stateOf(applyOf(builtIn(0))), wait);
    EXPECT_EQ(stateOf(applyOf(mine(0))), wait);
    EXPECT_EQ(state("importButton"), wait);
    EXPECT_EQ(state("exportButton"), wait);
    EXPECT_EQ(stateOf(find("trashButton", mine(0))), wait);
  });
}

TEST_F(Presets, NothingCanBeAppliedToAMenuThatHasNotCome) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  openPresets();
  EXPECT_EQ(stateOf(applyOf(builtIn(0))), "disabled: The base has not told its menu yet");
}

TEST_F(Presets, ApplyingIsAskedForFirst) {
  openPresets();
  click(applyOf(builtIn(1)));
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(question(), "Apply \"Fanatec recommended, Gran Turismo 7\" to the active set?");
  EXPECT_EQ(message(), toSetC);
  EXPECT_EQ(dialog()->windowTitle().toStdString(), question());
  EXPECT_EQ(dialog()->accessibleDescription().toStdString(), toSetC);
  EXPECT_EQ(text("confirmButton"), "Apply preset");
  EXPECT_EQ(text("cancelButton"), "Cancel");
  EXPECT_TRUE(find<Button>("confirmButton").isDefault());
  EXPECT_EQ(find<Button>("confirmButton").kind(), Button::Kind::prominent);
  EXPECT_EQ(dialog()->width(), 480);
  settle();
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Presets, TheQuestionNamesTheActiveSet) {
  struct Case {
    int set;
    bool isAdvanced;
    const char* message;
  };
  const std::vector<Case> cases{
      {1, false, toSetA}, {2, false, toSetC}, {4, true, toSetC}, {1, true, toSetA}};
  for (const auto& [set, isAdvanced, expected] : cases) {
    simulate([=, number = set, advanced = isAdvanced](SimulatedBase& simulated) {
      simulated.menu().reset();
      simulated.menu().select(number);
      if (advanced) simulated.menu().toggleMode();
    });
    openPresets();
    click(applyOf(builtIn(0)));
    EXPECT_EQ(message(), expected);
    closeWindow();
    end();
  }
}

TEST_F(Presets, CancelAndEscSendNothing) {
  openPresets();
  for (const bool byKey : {false, true}) {
    click(applyOf(builtIn(0)));
    ASSERT_NE(dialog(), nullptr);
    if (byKey) {
      press(Qt::Key_Escape);
    } else {
      click("cancelButton");
    }
    settle();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_FALSE(exists("confirmDialog"));
  }
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(Presets, ApplyWritesTheValues) {
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::fullForce, 0); });
  start();
  model().stage(P::forceFeedback, 80);
  show();
  visit(Section::presets);
  click(applyOf(builtIn(2)));
  click("confirmButton");
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Applied \"Redline Lab 2025, Gran Turismo 7 (8 Nm)\" (11 values)"}));
  const Lines transcript = takeTranscript();
  ASSERT_EQ(transcript.size(), 33U);
  EXPECT_EQ(transcript[0], writeOf("7e", "41", "05"));
  EXPECT_EQ(transcript[3], writeOf("7e", "64", "05"));
  EXPECT_EQ(valueOnBase(P::springEffect), 0);
  EXPECT_EQ(staged(), "FF=80");
}

TEST_F(Presets, EnterAnswersTheQuestionWithYes) {
  openPresets();
  own("Wet");
  click(applyOf(mine(0)));
  press(Qt::Key_Return);
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Applied \"Wet\" (16 values)"}));
}

TEST_F(Presets, TheButtonCountsTheValuesThatAreWritten) {
  openPresets();
  click(applyOf(builtIn(0)));
  atPause(
      3, [this] { click("confirmButton"); },
      [this] {
        EXPECT_EQ(applyOf(builtIn(0)).text(), QStringLiteral("3 of 14"));
        EXPECT_EQ(applyOf(builtIn(1)).text(), QStringLiteral("Apply now"));
        EXPECT_EQ(applyOf(builtIn(0)).accessibleName(),
                  QStringLiteral("Apply now, Fanatec factory defaults"));
        EXPECT_EQ(text("progress"), "3 of 14");
      });
  EXPECT_EQ(applyOf(builtIn(0)).text(), QStringLiteral("Apply now"));
}

TEST_F(Presets, ASaveIsNoProgressOfAPreset) {
  openPresets();
  stage(P::forceFeedback, 80);
  atPause(
      0, [this] { model().saveStaged(); },
      [this] { EXPECT_EQ(applyOf(builtIn(0)).text(), QStringLiteral("Apply now")); });
}

TEST_F(Presets, WhatTheQuestionSaysFollowsTheBase) {
  openPresets();
  click(applyOf(builtIn(0)));
  ASSERT_EQ(message(), toSetC);
  Bytes report;
  simulate([&](SimulatedBase& simulated) {
    simulated.menu().select(1);
    report = simulated.menu().report();
  });
  base().sendReport(report);
  settle();
  EXPECT_EQ(message(), toSetA);
  EXPECT_EQ(dialog()->accessibleDescription().toStdString(), toSetA);
}

TEST_F(Presets, TheQuestionGoesWithTheBase) {
  openPresets();
  click(applyOf(builtIn(0)));
  ASSERT_NE(dialog(), nullptr);
  base().unplug();
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(takeLog(), (Lines{disconnectedLine}));
}

TEST_F(Presets, FilesAreImported) {
  openPresets();
  const path file = directory_ / "wet.json";
  putFile(file, encodePresets({presetOf("Wet", {{P::forceFeedback, 80}})}));
  panels_.answerAtOnce(file);
  click("importButton");
  EXPECT_EQ(panels_.takeRequests(), (Lines{"open: Import settings [Import] settings, no name"}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Imported \"Wet\" from " + file.string()}));
  EXPECT_EQ(names("minePresets"), (Lines{"Wet"}));
  EXPECT_EQ(find("presetValues", mine(0)).accessibleName(),
            QStringLiteral("Force feedback strength 80 %"));
}

TEST_F(Presets, OnesOwnAreExported) {
  openPresets();
  own("Wet");
  const path file = directory_ / "mine.json";
  panels_.answerAtOnce(file);
  click("exportButton");
  EXPECT_EQ(panels_.takeRequests(),
            (Lines{"save: Export presets [Export] presets, quorvane-presets.json"}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Exported 1 preset to " + file.string()}));
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(Presets, NarrowWindowsHaveTheCaptionAboveTheField) {
  openPresets();
  EXPECT_LT(find("savePresetCaption").geometry().right(), find("presetNameField").x());
  window().resize(860, 560);
  settle();
  EXPECT_LT(find("savePresetCaption").geometry().bottom(), find("presetNameField").y());
  window().resize(1120, 740);
  settle();
  EXPECT_LT(find("savePresetCaption").geometry().right(), find("presetNameField").x());
}

TEST_F(Presets, NothingIsWiderThanTheSmallestWindow) {
  openPresets();
  own(std::string(200, 'x'));
  window().resize(860, 560);
  settle();
  for (QScrollArea* const area : find("presetsPage").findChildren<QScrollArea*>()) {
    EXPECT_LE(area->widget()->width(), area->viewport()->width());
  }
}

}  // namespace
}  // namespace quorvane
