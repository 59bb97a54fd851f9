#include "ui/compare/compare_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>
#include <algorithm>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"
#include "ui/compare/compare_columns.h"
#include "ui/compare/compare_model.h"
#include "ui/kit/tick_box.h"
#include "ui/presets/preset_row.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr const char* onTheBase = "On the base now, set C (Custom)";

// The window that compares two sides.
class CompareSides : public WindowTest {
 protected:
  // Opens it for a preset that differs from the base in four values.
  void openCompare() {
    openWindow();
    press(Qt::Key_D, Qt::ControlModifier);
  }

  void openWindow() {
    putFile(directory_ / "presets.json",
            encodePresets({presetOf("Spa", {{P::forceFeedback, 100},
                                            {P::forceEffect, 100},
                                            {P::springEffect, 0},
                                            {P::naturalDamper, 15},
                                            {P::interpolation, 3}}),
                           presetOf("Monza", {{P::forceFeedback, 60}})}));
    open();
    takeLog();
  }

  QListView& list() { return find<QListView>("compareList"); }
  const CompareModel& rows() { return static_cast<const CompareModel&>(*list().model()); }

  QModelIndex row(const char* code) {
    return rows().index(rows().rowOf(QString::fromUtf8(code)), 0);
  }

  std::string spoken(const char* code) {
    return row(code).data(Qt::AccessibleTextRole).toString().toStdString();
  }

  std::string ticked() { return rows().ticked().join(u' ').toStdString(); }

  std::string counts() { return text("differingCount") + " " + text("otherCounts"); }

  void clickBox(const char* code) {
    const QRect place = list().visualRect(row(code));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier,
                      CompareColumns::of(place).box.center());
    settle();
  }

  // Chooses the entry of a picker that begins with these words.
  void choose(const std::string& picker, const std::string& entry) {
    auto& box = find<QComboBox>(picker);
    const int index = box.findText(QString::fromStdString(entry), Qt::MatchStartsWith);
    ASSERT_GE(index, 0) << entry;
    box.setCurrentIndex(index);
    emit box.activated(index);
    settle();
  }

  static void putOnClipboard(const char* words) {
    QApplication::clipboard()->setText(QString::fromUtf8(words));
  }
};

TEST_F(CompareSides, TheEditMenuComparesAPresetWithTheBase) {
  openCompare();
  ASSERT_NE(dialog(), nullptr);
  EXPECT_FALSE(dialog()->isModal());
  EXPECT_EQ(text("leftSidePicker"), onTheBase);
  EXPECT_EQ(text("rightSidePicker"), "Spa");
  EXPECT_EQ(counts(), "4 differ, 1 is the same, 11 only on the base");
  EXPECT_EQ(rows().rowCount(), 16);
  EXPECT_EQ(spoken("FF"), "FF, Force feedback strength, 65 %, 100 %, +35, stronger");
  EXPECT_EQ(spoken("NDP"), "NDP, Natural damper, 25 %, 15 %, −10");
  EXPECT_EQ(spoken("FOR"), "FOR, Force effect strength, 100 %, 100 %, same");
  EXPECT_EQ(spoken("BLI"), "BLI, Brake level indicator, OFF, none, only on the base");
}

TEST_F(CompareSides, WordsSayWhatTheyMean) {
  openWindow();
  putOnClipboard("SEN AUTO, BLI 40, FFS linear");
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(spoken("SEN"), "SEN, Sensitivity (steering angle), 900 deg, AUTO, automatic angle");
  EXPECT_EQ(spoken("BLI"), "BLI, Brake level indicator, OFF, 40 %, switched on");
  EXPECT_EQ(spoken("FFS"), "FFS, Force feedback scaling, PEA, LIN, LIN, Linear");
}

TEST_F(CompareSides, TheTickedValuesAreFilledInAndNothingIsWritten) {
  openCompare();
  EXPECT_EQ(ticked(), "FF SPR NDP INT");
  EXPECT_EQ(text("fillInButton"), "Fill in the 4 ticked");
  clickBox("SPR");
  EXPECT_EQ(ticked(), "FF NDP INT");
  EXPECT_EQ(text("fillInButton"), "Fill in the 3 ticked");
  takeTranscript();
  click("fillInButton");
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(staged(), "FF=100 NDP=15 INT=3");
  EXPECT_EQ(takeLog(), (Lines{"[log] Loaded \"Spa\": 3 values to save"}));
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(window().section(), Section::tuning);
}

TEST_F(CompareSides, AnEqualRowHasNoBox) {
  openCompare();
  clickBox("FOR");
  clickBox("BLI");
  EXPECT_EQ(ticked(), "FF SPR NDP INT");
  EXPECT_FALSE(row("FOR").data(Qt::CheckStateRole).isValid());
}

TEST_F(CompareSides, TheBoxAboveTicksAll) {
  openCompare();
  EXPECT_EQ(find<TickBox>("tickAllBox").checkState(), Qt::Checked);
  clickBox("FF");
  EXPECT_EQ(find<TickBox>("tickAllBox").checkState(), Qt::PartiallyChecked);
  click("tickAllBox");
  EXPECT_EQ(ticked(), "FF SPR NDP INT");
  click("tickAllBox");
  EXPECT_EQ(ticked(), "");
  EXPECT_EQ(text("fillInButton"), "Fill in the ticked");
  EXPECT_EQ(state("fillInButton"), "disabled: Tick a row first");
}

TEST_F(CompareSides, TheKeysAreEnough) {
  openCompare();
  EXPECT_EQ(focused(), "compareList");
  press(Qt::Key_Down);
  EXPECT_EQ(list().currentIndex(), row("FF"));
  press(Qt::Key_Space);
  EXPECT_EQ(ticked(), "SPR NDP INT");
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(ticked(), "FF SPR NDP INT");
  press(Qt::Key_Space);
  press(Qt::Key_Return);
  EXPECT_EQ(staged(), "");
  press(Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(staged(), "SPR=0 NDP=15 INT=3");
  press(Qt::Key_D, Qt::ControlModifier);
  ASSERT_NE(dialog(), nullptr);
  press(Qt::Key_Escape);
  EXPECT_EQ(dialog(), nullptr);
}

TEST_F(CompareSides, TicksStayWhileTheWheelIsTurned) {
  openCompare();
  clickBox("FF");
  list().setCurrentIndex(row("SPR"));
  base().turn(P::forceFeedback, 70);
  base().turn(P::forceEffect, 90);
  settle();
  EXPECT_EQ(spoken("FF"), "FF, Force feedback strength, 70 %, 100 %, +30, stronger");
  EXPECT_EQ(counts(), "5 differ, 0 are the same, 11 only on the base");
  EXPECT_EQ(ticked(), "FOR SPR NDP INT");
  EXPECT_EQ(list().currentIndex(), row("SPR"));
  base().turn(P::forceFeedback, 100);
  settle();
  EXPECT_EQ(counts(), "4 differ, 1 is the same, 11 only on the base");
  base().turn(P::forceFeedback, 65);
  settle();
  EXPECT_EQ(ticked(), "FOR SPR NDP INT");
}

TEST_F(CompareSides, FollowsThePresets) {
  openCompare();
  TuningPreset other = model().userPresets()[0];
  other.name = "Spa, wet";
  other.values["FF"] = 65;
  model().editPreset(model().userPresets()[0], other);
  settle();
  EXPECT_EQ(text("rightSidePicker"), "Spa, wet");
  EXPECT_EQ(counts(), "3 differ, 2 are the same, 11 only on the base");
  model().deletePreset(other);
  settle();
  EXPECT_EQ(text("rightSidePicker"), "Spa, wet");
  EXPECT_EQ(counts(), "3 differ, 2 are the same, 11 only on the base");
}

TEST_F(CompareSides, WithoutItsBaseTheSideSaysWhenItWasRead) {
  openCompare();
  base().unplug();
  settle();
  EXPECT_TRUE(text("leftSidePicker").starts_with("Last read ")) << text("leftSidePicker");
  EXPECT_EQ(counts(), "4 differ, 1 is the same, 11 only on the base");
  EXPECT_EQ(state("fillInButton"), std::string("disabled: ") + connectReason);
  base().plug();
  settle();
  EXPECT_EQ(text("leftSidePicker"), onTheBase);
  EXPECT_TRUE(state("fillInButton").starts_with("enabled"));
}

TEST_F(CompareSides, WithoutABaseThereIsOneSide) {
  openWithoutBase();
  press(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(text("leftSidePicker"), "No base connected");
  EXPECT_EQ(text("rightSidePicker"), "Fanatec factory defaults");
  EXPECT_TRUE(counts().starts_with("0 differ, 0 are the same, ")) << counts();
  EXPECT_EQ(state("fillInButton"), std::string("disabled: ") + connectReason);
}

TEST_F(CompareSides, SwappedTheBaseCannotBeFilledIn) {
  openCompare();
  clickBox("FF");
  click("swapSidesButton");
  EXPECT_EQ(text("leftSidePicker"), "Spa");
  EXPECT_EQ(text("rightSidePicker"), onTheBase);
  EXPECT_EQ(counts(), "4 differ, 1 is the same, 11 only on the base");
  EXPECT_EQ(state("fillInButton"),
            "disabled: The base has these values. Swap the sides to fill in the others");
  click("swapSidesButton");
  EXPECT_EQ(ticked(), "SPR NDP INT");
}

TEST_F(CompareSides, ShowsOnlyWhatDiffersOnDemand) {
  openCompare();
  list().setCurrentIndex(row("NDP"));
  click("onlyDifferentBox");
  EXPECT_EQ(rows().rowCount(), 4);
  EXPECT_EQ(counts(), "4 differ, 1 is the same, 11 only on the base");
  click("onlyDifferentBox");
  EXPECT_EQ(rows().rowCount(), 16);
}

TEST_F(CompareSides, OffersEverySide) {
  openCompare();
  choose("leftSidePicker", "Monza");
  EXPECT_EQ(counts(), "1 differs, 0 are the same, 4 only right");
  EXPECT_EQ(ticked(), "FF FOR SPR NDP INT");
  choose("rightSidePicker", "Fanatec factory defaults");
  EXPECT_EQ(text("rightSidePicker"), "Fanatec factory defaults");
  choose("leftSidePicker", onTheBase);
  EXPECT_EQ(text("leftSidePicker"), onTheBase);
}

TEST_F(CompareSides, AFileIsASide) {
  openCompare();
  const auto file = directory_ / "two.json";
  putFile(file,
          encodePresets({presetOf("Imola", {{P::forceFeedback, 50}}), presetOf("Jerez", {})}));
  panels_.answerAtOnce(file);
  choose("rightSidePicker", "A settings file…");
  EXPECT_EQ(text("rightSidePicker"), "File: Imola");
  EXPECT_EQ(counts(), "1 differs, 0 are the same, 15 only on the base");
  choose("rightSidePicker", "File: Jerez");
  EXPECT_EQ(counts(), "0 differ, 0 are the same, 16 only on the base");
  EXPECT_EQ(model().userPresets().size(), 2U);
  choose("rightSidePicker", "A settings file…");
  EXPECT_EQ(text("rightSidePicker"), "File: Jerez");
}

TEST_F(CompareSides, AFormerMenuIsASide) {
  openWindow();
  stage(P::forceFeedback, 80);
  model().saveStaged();
  settle();
  press(Qt::Key_D, Qt::ControlModifier);
  waitUntil([&] {
    QCoreApplication::sendPostedEvents();
    return find<QComboBox>("rightSidePicker")
               .findText(QStringLiteral("Before "), Qt::MatchStartsWith) >= 0;
  });
  choose("rightSidePicker", "Before ");
  EXPECT_TRUE(text("rightSidePicker").ends_with(" (save)")) << text("rightSidePicker");
  EXPECT_EQ(counts(), "1 differs, 15 are the same");
  EXPECT_EQ(spoken("FF"), "FF, Force feedback strength, 80 %, 65 %, −15");
}

TEST_F(CompareSides, PastedTextIsComparedAndItsRestIsListed) {
  openWindow();
  putOnClipboard("My setup: FF 80, Max Torque 5\nNDP 25% <b>");
  press(Qt::Key_V, Qt::ControlModifier);
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(text("rightSidePicker"), "Pasted text");
  EXPECT_EQ(counts(), "1 differs, 1 is the same, 14 only on the base");
  EXPECT_EQ(find<QPlainTextEdit>("notUnderstood").toPlainText().toStdString(),
            "Not understood:\nMy setup\nMax Torque 5\n<b>");
  choose("rightSidePicker", "Spa");
  EXPECT_FALSE(isVisible("notUnderstood"));
}

TEST_F(CompareSides, PastedTextsAreToldApartAndOfferedOnce) {
  openCompare();
  for (const char* const pasted : {"FF 80", "FF 90", "FF 80"}) {
    putOnClipboard(pasted);
    trigger("pasteSideAction");
  }
  EXPECT_EQ(text("rightSidePicker"), "Pasted text");
  EXPECT_EQ(spoken("FF"), "FF, Force feedback strength, 65 %, 80 %, +15");
  choose("rightSidePicker", "Pasted text 2");
  EXPECT_EQ(spoken("FF"), "FF, Force feedback strength, 65 %, 90 %, +25, stronger");
  EXPECT_LT(find<QComboBox>("rightSidePicker").findText(QStringLiteral("Pasted text 3")), 0);
}

TEST_F(CompareSides, APastedSettingsFileOffersItsPresets) {
  openCompare();
  const std::string content = encodePresets(
      {presetOf("Imola", {{P::forceFeedback, 50}}), presetOf("Zolder", {{P::forceFeedback, 40}})});
  putOnClipboard(content.c_str());
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(text("rightSidePicker"), "Pasted: Imola");
  EXPECT_FALSE(isVisible("notUnderstood"));
  choose("rightSidePicker", "Pasted: Zolder");
  EXPECT_EQ(spoken("FF"), "FF, Force feedback strength, 65 %, 40 %, −25");
}

TEST_F(CompareSides, TextWithoutSettingsIsAnError) {
  openWindow();
  putOnClipboard("Nice weather today");
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(takeLog(),
            Lines{"[error] Could not import the pasted text: There is no setting in it"});
  QApplication::clipboard()->clear();
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(CompareSides, ATextFieldKeepsItsPaste) {
  openWindow();
  visit(Section::presets);
  auto& field = find<QLineEdit>("presetSearchField");
  field.setFocus();
  putOnClipboard("FF 80");
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(field.text(), QStringLiteral("FF 80"));
}

TEST_F(CompareSides, TheRightSideIsCopiedAsText) {
  openCompare();
  click("copyComparedButton");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
            "FF 100, FOR 100, SPR 0, NDP 15, INT 3");
}

TEST_F(CompareSides, APresetIsComparedFromItsRowAndItsMenu) {
  openWindow();
  visit(Section::presets);
  for (PresetRow* const row : window().findChildren<PresetRow*>()) {
    if (row->preset().name == "Monza") row->setFocus(Qt::TabFocusReason);
  }
  press(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(text("rightSidePicker"), "Monza");
  press(Qt::Key_Escape);
  for (PresetRow* const row : window().findChildren<PresetRow*>()) {
    if (row->preset().name == "Spa") click(find("presetMenuButton", *row));
  }
  QMenu& menu = *window().findChildren<QMenu*>(QStringLiteral("presetMenu")).back();
  EXPECT_EQ(entriesOf(menu).front(), "Compare…");
  find<QAction>("comparePresetAction", menu).trigger();
  menu.close();
  settle();
  EXPECT_EQ(text("rightSidePicker"), "Spa");
}

TEST_F(CompareSides, AnImportedPresetCanBeCompared) {
  openWindow();
  const auto file = directory_ / "one.json";
  putFile(file, encodePresets({presetOf("Imola", {{P::forceFeedback, 50}})}));
  model().importSettings(file);
  settle();
  ASSERT_TRUE(isVisible("compareImportedLink"));
  EXPECT_EQ(name("compareImportedLink"), "Compare Imola");
  click("compareImportedLink");
  EXPECT_EQ(text("rightSidePicker"), "Imola");
  press(Qt::Key_Escape);
  model().deletePreset(model().userPresets().back());
  settle();
  EXPECT_FALSE(isVisible("compareImportedLink"));
  EXPECT_TRUE(isVisible("undoDeleteLink"));
}

TEST_F(CompareSides, ThereIsOneWindow) {
  openCompare();
  putOnClipboard("FF 80");
  trigger("pasteSettingsAction");
  EXPECT_EQ(window().findChildren<CompareWindow*>().size(), 1);
  EXPECT_EQ(text("rightSidePicker"), "Pasted text");
}

TEST_F(CompareSides, CountsAddUpToTheRows) {
  openCompare();
  const std::vector<const char*> sides{"FF 100, SEN AUTO, DRI 2, brF 47",
                                       "FF 900, SHO 100, BLI OFF, NIN 5",
                                       "SEN 900, FF 65, SHO 100, FFS PEA, INT 3, FUL 20, SPR 120",
                                       "FF 65", "ACP CH, INT 20, NFR 0, DPR 100, FEI 0, FOR 120"};
  for (const char* const side : sides) {
    putOnClipboard(side);
    choose("leftSidePicker", "Text from the clipboard");
    for (int i = 0; i < find<QComboBox>("rightSidePicker").count() - 2; ++i) {
      auto& picker = find<QComboBox>("rightSidePicker");
      picker.setCurrentIndex(i);
      emit picker.activated(i);
      settle();
      int sum = 0;
      for (const QString& count : QString::fromStdString(counts()).split(QStringLiteral(", "))) {
        sum += count.section(u' ', 0, 0).toInt();
      }
      EXPECT_EQ(sum, rows().rowCount()) << counts();
    }
  }
}

TEST_F(CompareSides, PartsAreNamed) {
  openCompare();
  EXPECT_EQ(name("leftSidePicker"), "Left side");
  EXPECT_EQ(name("rightSidePicker"), "Right side");
  EXPECT_EQ(name("swapSidesButton"), "Swap the sides");
  EXPECT_EQ(name("tickAllBox"), "Tick all");
  EXPECT_EQ(name("compareList"), "Settings on both sides");
}

}  // namespace
}  // namespace quorvane
