#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>
#include <algorithm>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/button.h"
#include "ui/kit/pickers.h"
#include "ui/model/window_state.h"
#include "ui/presets/preset_notes.h"
#include "ui/presets/preset_row.h"

namespace quorvane {
namespace {

using P = TuningParameter;

TuningPreset described(const std::string& name, const std::string& game, const std::string& notes,
                       std::int64_t forceFeedback) {
  TuningPreset preset = presetOf(name, {{P::forceFeedback, forceFeedback}});
  preset.game = game;
  preset.notes = notes;
  return preset;
}

// What is done with presets in their section.
class PresetWork : public WindowTest {
 protected:
  // Opens the section with three presets of the user's.
  void openThree() {
    own_ = {described("Spa, wet", "iRacing", "Gain 78 %", 80), described("Monza", "ACC", "", 65),
            described("Spa, dry", "ACC", std::string(60, 'n') + " " + std::string(300, 'm'), 70)};
    openWith(own_);
  }

  void openWith(const std::vector<TuningPreset>& presets) {
    putFile(directory_ / "presets.json", encodePresets(presets));
    open();
    visit(Section::presets);
    takeLog();
  }

  PresetRow* rowOf(const std::string& name) {
    for (PresetRow* const row : window().findChildren<PresetRow*>()) {
      if (row->preset().name == name) return row;
    }
    return nullptr;
  }

  void enter(const std::string& name) { rowOf(name)->setFocus(Qt::TabFocusReason); }

  // The name of the preset whose row has the focus; else the widget's.
  std::string place() {
    const auto* const row = qobject_cast<const PresetRow*>(QApplication::focusWidget());
    return row == nullptr ? focused() : row->preset().name;
  }

  Lines own() {
    Lines names;
    for (const TuningPreset& preset : model().userPresets()) names.push_back(preset.name);
    return names;
  }

  // The names of the presets that a group shows, from top to bottom.
  Lines listed(const std::string& group) {
    QList<PresetRow*> rows = find(group).findChildren<PresetRow*>();
    std::sort(rows.begin(), rows.end(),
              [](const QWidget* a, const QWidget* b) { return a->y() < b->y(); });
    Lines names;
    for (const PresetRow* const row : rows) {
      if (row->isVisible()) names.push_back(row->preset().name);
    }
    return names;
  }

  // Activates the window again, as a desktop does after a dialog.
  void activate() {
    window().activateWindow();
    QCoreApplication::processEvents();
  }

  QMenu& menuOf(const std::string& name) {
    click(find("presetMenuButton", *rowOf(name)));
    return *window().findChildren<QMenu*>(QStringLiteral("presetMenu")).back();
  }

  void choose(const std::string& name, const std::string& action) {
    QMenu& menu = menuOf(name);
    find<QAction>(action, menu).trigger();
    menu.close();
    settle();
  }

  void search(const std::string& words) {
    find<QLineEdit>("presetSearchField").setText(QString::fromStdString(words));
    settle();
  }

  std::vector<TuningPreset> own_;
};

TEST_F(PresetWork, TheMenuOffersWhatThePresetAllows) {
  openThree();
  QMenu& mine = menuOf("Monza");
  EXPECT_EQ(entriesOf(mine), (Lines{"Compare…", "Edit…", "Duplicate", "Copy as text",
                                    "Replace by the current menu"}));
  mine.close();
  QMenu& builtIn = menuOf("Fanatec factory defaults");
  EXPECT_EQ(entriesOf(builtIn), (Lines{"Compare…", "Duplicate", "Copy as text"}));
  builtIn.close();
}

TEST_F(PresetWork, ButtonsHaveTheirColumnsInBothGroups) {
  openThree();
  for (const char* const button : {"loadButton", "applyButton", "presetMenuButton"}) {
    EXPECT_EQ(find(button, *rowOf("Monza")).x(),
              find(button, *rowOf("Fanatec factory defaults")).x())
        << button;
  }
}

TEST_F(PresetWork, ACopyStandsAfterThePresetAndIsMarked) {
  openThree();
  choose("Monza", "duplicatePresetAction");
  EXPECT_EQ(own(), (Lines{"Spa, wet", "Monza", "Monza copy", "Spa, dry"}));
  EXPECT_TRUE(rowOf("Monza copy")->isMarked());
  EXPECT_EQ(takeLog(), (Lines{R"([log] Duplicated preset "Monza" as "Monza copy")"}));
  press(Qt::Key_Z, Qt::ControlModifier);
  settle();
  EXPECT_EQ(model().userPresets(), own_);
}

TEST_F(PresetWork, ABuiltInPresetIsCopiedToTheEnd) {
  openThree();
  choose("Fanatec factory defaults", "duplicatePresetAction");
  EXPECT_EQ(own().back(), "Fanatec factory defaults copy");
}

TEST_F(PresetWork, ValuesAreCopiedAsText) {
  openThree();
  choose("Monza", "copyPresetAction");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "FF 65");
  enter("Spa, wet");
  press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "FF 80");
}

TEST_F(PresetWork, TheMenuOnTheBaseReplacesTheValues) {
  openThree();
  choose("Monza", "replacePresetAction");
  EXPECT_EQ(model().userPresets()[1].values.size(), 16U);
  EXPECT_EQ(model().userPresets()[1].game, "ACC");
  press(Qt::Key_Z, Qt::ControlModifier);
  settle();
  EXPECT_EQ(model().userPresets(), own_);
}

TEST_F(PresetWork, TextsAreEditedAndTheRecordStaysInPlace) {
  openThree();
  enter("Monza");
  press(Qt::Key_F2);
  ASSERT_TRUE(exists("editPresetDialog"));
  EXPECT_EQ(text("editNameField"), "Monza");
  EXPECT_EQ(text("editGameField"), "ACC");
  EXPECT_EQ(text("editValuesNote"), "Its value stays as it is.");
  const auto& games = find<QComboBox>("editGameField");
  EXPECT_GE(games.findText(QStringLiteral("iRacing")), 0);
  EXPECT_EQ(focused(), "editNameField");
  type("Imola");
  find<QComboBox>("editGameField").setEditText(QStringLiteral("AMS 2"));
  find<QLineEdit>("editSourceField").setFocus();
  type("Own");
  press(Qt::Key_Return);
  settle();
  EXPECT_FALSE(exists("editPresetDialog"));
  const TuningPreset after = model().userPresets()[1];
  EXPECT_EQ(after.id, own_[1].id);
  EXPECT_EQ(after.values, own_[1].values);
  EXPECT_EQ(Lines({after.name, after.game, after.source, after.notes}),
            (Lines{"Imola", "AMS 2", "Own", ""}));
  EXPECT_EQ(takeLog(), (Lines{R"([log] Edited preset "Imola", before "Monza")"}));
  activate();
  EXPECT_EQ(place(), "Imola");
  press(Qt::Key_Z, Qt::ControlModifier);
  settle();
  EXPECT_EQ(model().userPresets(), own_);
}

TEST_F(PresetWork, InTheNotesReturnMakesALineAndCtrlReturnSaves) {
  openThree();
  choose("Monza", "editPresetAction");
  find("editNotesField").setFocus();
  type("a");
  press(Qt::Key_Return);
  type("b");
  EXPECT_TRUE(exists("editPresetDialog"));
  press(Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_FALSE(exists("editPresetDialog"));
  EXPECT_EQ(model().userPresets()[1].notes, "a\nb");
}

TEST_F(PresetWork, AnEditNeedsAName) {
  openThree();
  choose("Monza", "editPresetAction");
  find<QLineEdit>("editNameField").setText(QStringLiteral("  "));
  EXPECT_EQ(state("saveEditButton"), "disabled: Type a name first");
  press(Qt::Key_Escape);
  settle();
  EXPECT_EQ(model().userPresets(), own_);
}

TEST_F(PresetWork, AnEditOfNothingChangesNothing) {
  TuningPreset odd = described("Odd\tname", "ACC ", "a\r\nb\f", 80);
  openWith({odd});
  choose("Odd\tname", "editPresetAction");
  click("saveEditButton");
  settle();
  EXPECT_EQ(model().userPresets()[0].notes, odd.notes);
  EXPECT_EQ(model().userPresets()[0].game, odd.game);
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(PresetWork, ArrowsGoFromRowToRow) {
  openThree();
  enter("Spa, wet");
  const std::vector<std::pair<int, std::string>> steps{
      {Qt::Key_Down, "Monza"},
      {Qt::Key_End, "Spa, dry"},
      {Qt::Key_Down, "Spa, dry"},
      {Qt::Key_Home, "Spa, wet"},
      {Qt::Key_Up, "Gearwerk 2025, Gran Turismo 7 (8 Nm)"},
      {Qt::Key_Home, "Fanatec factory defaults"},
      {Qt::Key_Up, "Fanatec factory defaults"}};
  for (const auto& [key, expected] : steps) {
    press(key);
    EXPECT_EQ(place(), expected);
  }
}

TEST_F(PresetWork, RightAndLeftWalkTheButtonsOfARow) {
  openThree();
  enter("Monza");
  for (const char* const button :
       {"loadButton", "applyButton", "presetMenuButton", "trashButton", "trashButton"}) {
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), button);
  }
  for (const char* const button : {"presetMenuButton", "applyButton", "loadButton"}) {
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), button);
  }
  press(Qt::Key_Left);
  EXPECT_EQ(place(), "Monza");
  press(Qt::Key_Right);
  press(Qt::Key_Down);
  EXPECT_EQ(place(), "Spa, dry");
}

TEST_F(PresetWork, KeysOfARowLoadApplyAndDelete) {
  openThree();
  enter("Monza");
  press(Qt::Key_Return, Qt::ControlModifier);
  settle();
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(textOf(find("dialogTitle", *dialog())), R"(Apply "Monza" to the active set?)");
  press(Qt::Key_Escape);
  settle();
  activate();
  EXPECT_EQ(place(), "Monza");
  press(Qt::Key_Delete);
  settle();
  EXPECT_EQ(own(), (Lines{"Spa, wet", "Spa, dry"}));
  EXPECT_EQ(focused(), "presetsPage");
  press(Qt::Key_Down);
  EXPECT_EQ(place(), "Spa, dry");
  press(Qt::Key_Return);
  settle();
  EXPECT_TRUE(isVisible("tuningPage"));
  EXPECT_EQ(staged(), "FF=70");
}

TEST_F(PresetWork, BuiltInPresetsAreNeitherEditedNorDeletedByKey) {
  openThree();
  enter("Fanatec factory defaults");
  for (const int key : {Qt::Key_F2, Qt::Key_Delete}) press(key);
  press(Qt::Key_Down, Qt::AltModifier);
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(model().userPresets(), own_);
}

TEST_F(PresetWork, TheMenuKeyOpensTheMenu) {
  openThree();
  enter("Monza");
  press(Qt::Key_F10, Qt::ShiftModifier);
  const auto menus = window().findChildren<QMenu*>(QStringLiteral("presetMenu"));
  ASSERT_EQ(menus.size(), 1);
  EXPECT_TRUE(menus.front()->isVisible());
  menus.front()->close();
}

TEST_F(PresetWork, AltUpAndDownChangeTheOrder) {
  openThree();
  enter("Spa, wet");
  press(Qt::Key_Down, Qt::AltModifier);
  settle();
  EXPECT_EQ(own(), (Lines{"Monza", "Spa, wet", "Spa, dry"}));
  EXPECT_EQ(listed("minePresets"), own());
  EXPECT_EQ(place(), "Spa, wet");
  press(Qt::Key_Up, Qt::AltModifier);
  press(Qt::Key_Up, Qt::AltModifier);
  settle();
  EXPECT_EQ(own(), (Lines{"Spa, wet", "Monza", "Spa, dry"}));
  press(Qt::Key_Z, Qt::ControlModifier);
  settle();
  EXPECT_EQ(own(), (Lines{"Monza", "Spa, wet", "Spa, dry"}));
}

TEST_F(PresetWork, ADraggedRowLandsWhereItIsDropped) {
  openThree();
  PresetRow& row = *rowOf("Spa, dry");
  const PresetRow& target = *rowOf("Spa, wet");
  const QPoint start(200, 10);
  const QPoint end = row.mapFromGlobal(target.mapToGlobal(QPoint(200, 5)));
  QTest::mousePress(&row, Qt::LeftButton, Qt::NoModifier, start);
  QTest::mouseMove(&row, (start + end) / 2);
  QTest::mouseMove(&row, end);
  QTest::mouseRelease(&row, Qt::LeftButton, Qt::NoModifier, end);
  settle();
  EXPECT_EQ(own(), (Lines{"Spa, dry", "Spa, wet", "Monza"}));
}

TEST_F(PresetWork, ASearchListsWhatMatchesAndCounts) {
  openThree();
  struct Case {
    const char* words;
    Lines mine;
    const char* mineCaption;
    const char* builtInCaption;
  };
  const std::vector<Case> cases{
      {"spa", {"Spa, wet", "Spa, dry"}, "Mine, 2 of 3 match", "Built in, none of 4 match"},
      {"FF=80", {"Spa, wet"}, "Mine, 1 of 3 match", "Built in, none of 4 match"},
      {"gain", {"Spa, wet"}, "Mine, 1 of 3 match", "Built in, none of 4 match"},
      {"forum", {}, "Mine, none of 3 match", "Built in, 1 of 4 match"},
      {"", {"Spa, wet", "Monza", "Spa, dry"}, "Mine, 3", "Built in, 4"},
  };
  for (const Case& each : cases) {
    search(each.words);
    EXPECT_EQ(listed("minePresets"), each.mine) << each.words;
    EXPECT_EQ(name("mineCaption"), each.mineCaption);
    EXPECT_EQ(name("builtInCaption"), each.builtInCaption);
  }
}

TEST_F(PresetWork, EscEmptiesTheSearchThenLeavesIt) {
  openThree();
  press(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(focused(), "presetSearchField");
  type("spa");
  EXPECT_TRUE(isVisible("clearSearchButton"));
  press(Qt::Key_Escape);
  EXPECT_EQ(text("presetSearchField"), "");
  EXPECT_EQ(focused(), "presetSearchField");
  press(Qt::Key_Escape);
  EXPECT_EQ(place(), "Fanatec factory defaults");
  press(Qt::Key_Slash);
  EXPECT_EQ(focused(), "presetSearchField");
}

TEST_F(PresetWork, PresetsAreFilteredByGame) {
  openThree();
  auto& games = find<Picker>("gamePicker");
  Lines offered;
  for (int i = 0; i < games.count(); ++i) offered.push_back(games.itemText(i).toStdString());
  EXPECT_EQ(offered, (Lines{"All games", "ACC", "Gran Turismo 7", "iRacing"}));
  games.setCurrentIndex(1);
  emit games.chosen(1);
  settle();
  EXPECT_EQ(listed("minePresets"), (Lines{"Monza", "Spa, dry"}));
  EXPECT_EQ(name("mineCaption"), "Mine, 2 of 3 match");
}

TEST_F(PresetWork, AGroupIsFoldedAndStaysSo) {
  openThree();
  click("builtInCaption");
  settle();
  EXPECT_EQ(listed("builtInPresets"), Lines{});
  search("forum");
  EXPECT_EQ(listed("builtInPresets"), (Lines{"Fanatec recommended, Gran Turismo 7"}));
  search("");
  EXPECT_EQ(listed("builtInPresets"), Lines{});
  closeWindow();
  show();
  visit(Section::presets);
  EXPECT_EQ(listed("builtInPresets"), Lines{});
  focus("builtInCaption");
  press(Qt::Key_Space);
  settle();
  EXPECT_EQ(listed("builtInPresets").size(), 4U);
}

TEST_F(PresetWork, LongNotesUnfoldInPlace) {
  openThree();
  PresetRow& row = *rowOf("Spa, dry");
  const int folded = row.height();
  auto& link = find<QAbstractButton>("moreNotesLink", row);
  ASSERT_TRUE(link.isVisible());
  EXPECT_EQ(textOf(link), "More");
  click(link);
  settle();
  EXPECT_GT(row.height(), folded);
  EXPECT_EQ(textOf(link), "Less");
  click(link);
  settle();
  EXPECT_EQ(row.height(), folded);
  EXPECT_FALSE(find("moreNotesLink", *rowOf("Spa, wet")).isVisible());
}

TEST_F(PresetWork, ARowIsNamedWithItsGameAndBadge) {
  openThree();
  EXPECT_EQ(rowOf("Spa, wet")->accessibleName().toStdString(), "Spa, wet, iRacing, 1 differs");
  EXPECT_EQ(rowOf("Monza")->accessibleName().toStdString(), "Monza, ACC, On the base now");
}

TEST_F(PresetWork, TheQuestionSaysThatEditsStay) {
  openThree();
  stage(P::forceFeedback, 80);
  enter("Monza");
  press(Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_EQ(textOf(find("dialogMessage", *dialog())),
            "Values will be written to set C (Custom) and verified one by one.\nYour 1 unsaved "
            "change stays and is not part of this.");
}

TEST_F(PresetWork, AWideWindowExplainsTheChosenPreset) {
  openThree();
  EXPECT_FALSE(exists("presetPanel"));
  window().resize(1920, 1080);
  settle();
  ASSERT_TRUE(isVisible("presetPanel"));
  EXPECT_EQ(text("panelPresetName"), "Fanatec factory defaults");
  EXPECT_FALSE(isVisible("panelEditButton"));
  enter("Spa, wet");
  settle();
  EXPECT_EQ(text("panelPresetName"), "Spa, wet");
  EXPECT_EQ(text("panelPresetDetails"), "iRacing · Source: none");
  EXPECT_EQ(text("panelPresetNotes"), "Gain 78 %");
  EXPECT_EQ(text("panelPresetCount"), "1 differs from the base, 0 are the same");
  EXPECT_EQ(name("panelPresetChanges"), "Force feedback strength 80 %");
  EXPECT_TRUE(rowOf("Spa, wet")->isMarked());
  click("panelEditButton");
  settle();
  EXPECT_TRUE(exists("editPresetDialog"));
  press(Qt::Key_Escape);
  window().resize(1120, 740);
  settle();
  EXPECT_FALSE(isVisible("presetPanel"));
  EXPECT_FALSE(rowOf("Spa, wet")->isMarked());
}

TEST_F(PresetWork, FortyPresetsSwitchCompactRowsOnOnce) {
  const auto rowHeight = [this] {
    return find("minePresets").findChildren<PresetRow*>().front()->height();
  };
  std::vector<TuningPreset> presets;
  presets.reserve(40);
  for (int i = 0; i < 39; ++i) presets.push_back(described("Spa " + std::to_string(i), "", "", 80));
  openWith(presets);
  auto& compact = find<QAction>("compactPresetsAction");
  EXPECT_FALSE(compact.isChecked());
  const int height = rowHeight();
  model().saveCurrentAsPreset("Fortieth");
  settle();
  EXPECT_TRUE(compact.isChecked());
  EXPECT_LT(rowHeight(), height);
  trigger("compactPresetsAction");
  settle();
  EXPECT_EQ(rowHeight(), height);
  closeWindow();
  show();
  visit(Section::presets);
  EXPECT_FALSE(find<QAction>("compactPresetsAction").isChecked());
  EXPECT_EQ(rowHeight(), height);
}

}  // namespace
}  // namespace quorvane
