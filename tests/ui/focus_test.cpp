#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/button.h"
#include "ui/kit/focus_ring.h"
#include "ui/presets/preset_row.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class Focus : public WindowTest {
 protected:
  // Opens the presets section with some user presets.
  void openPresets(const Lines& names = {"Wet", "Dry", "Night"}) {
    open();
    own(names);
    visit(Section::presets);
  }

  void own(const Lines& names) {
    for (const std::string& name : names) model().saveCurrentAsPreset(name);
    settle();
    takeLog();
  }

  PresetRow& row(const std::string& group, int number) {
    QList<PresetRow*> rows = find(group).findChildren<PresetRow*>();
    std::sort(rows.begin(), rows.end(),
              [](const QWidget* a, const QWidget* b) { return a->y() < b->y(); });
    return *rows.at(number);
  }
  PresetRow& builtIn(int number) { return row("builtInPresets", number); }
  PresetRow& mine(int number) { return row("minePresets", number); }

  QWidget& applyOf(const PresetRow& row) { return find("applyButton", row); }
  QWidget& trashOf(const PresetRow& row) { return find("trashButton", row); }

  // The widget with the focus: "Wet" for a preset's row, "Wet: applyButton" in it, else its name.
  std::string place() {
    for (const QWidget* widget = QApplication::focusWidget(); widget != nullptr;
         widget = widget->parentWidget()) {
      if (const auto* const row = qobject_cast<const PresetRow*>(widget)) {
        if (row->hasFocus()) return row->preset().name;
        return row->preset().name + ": " + focused();
      }
    }
    return focused();
  }

  // Activates the window again, as a desktop does after a dialog.
  void activate() {
    window().activateWindow();
    QCoreApplication::processEvents();
  }

  Lines presetNames() {
    Lines names;
    for (const TuningPreset& preset : model().userPresets()) names.push_back(preset.name);
    return names;
  }

  // Calls `what`. Returns every control that got the focus meanwhile.
  Lines visitedDuring(const std::function<void()>& what) {
    Lines visited;
    QObject context;
    QObject::connect(qApp, &QApplication::focusChanged, &context,
                     [&](const QWidget* /*before*/, const QWidget* now) {
                       if (now != nullptr) visited.push_back(place());
                     });
    what();
    return visited;
  }

  static bool touches(const Lines& visited, const std::string& control) {
    return std::any_of(visited.begin(), visited.end(), [&](const std::string& place) {
      return place.find(control) != std::string::npos;
    });
  }
};

TEST_F(Focus, SpaceAfterApplyingByMouseDeletesNothing) {
  openPresets();
  for (PresetRow* const row : {&builtIn(0), &builtIn(3), &mine(0), &mine(2)}) {
    click(applyOf(*row));
    whileBusy([this] { click("confirmButton"); },
              [this] {
                activate();
                press(Qt::Key_Space);
                press(Qt::Key_Space);
              });
    activate();
    EXPECT_EQ(place(), row->preset().name + ": applyButton");
    press(Qt::Key_Space);
    press(Qt::Key_Escape);
    EXPECT_EQ(presetNames(), (Lines{"Wet", "Dry", "Night"}));
  }
}

TEST_F(Focus, SpaceAfterApplyingAnswersNoQuestionEither) {
  openPresets();
  click(applyOf(mine(0)));
  click("confirmButton");
  settle();
  activate();
  press(Qt::Key_Space);
  press(Qt::Key_Space);
  settle();
  EXPECT_EQ(presetNames(), (Lines{"Wet", "Dry", "Night"}));
}

TEST_F(Focus, ADialogGivesItBackToWhatOpenedIt) {
  openPresets();
  for (const char* const answer : {"cancelButton", "confirmButton"}) {
    click(applyOf(mine(1)));
    ASSERT_NE(dialog(), nullptr);
    click(answer);
    settle();
    activate();
    EXPECT_EQ(place(), "Dry: applyButton") << answer;
  }
  visit(Section::tools);
  click("factoryResetButton");
  click("cancelButton");
  activate();
  EXPECT_EQ(focused(), "factoryResetButton");
}

TEST_F(Focus, ADisabledControlHandsItToNoNeighbour) {
  openPresets();
  applyOf(builtIn(0)).setFocus(Qt::TabFocusReason);
  const Lines visited = visitedDuring([this] {
    whileReading([this] {
      EXPECT_EQ(place(), "Fanatec factory defaults");
      press(Qt::Key_Space);
    });
  });
  EXPECT_EQ(visited, (Lines{"Fanatec factory defaults", "Fanatec factory defaults: applyButton"}));
  EXPECT_EQ(presetNames().size(), 3U);
}

TEST_F(Focus, NoPageHandsItToAButtonThatDestroys) {
  open();
  own({"Wet"});
  for (const auto& [section, control] :
       std::vector<std::pair<Section, std::string>>{{Section::tuning, "FFSlider"},
                                                    {Section::tools, "rereadButton"},
                                                    {Section::tools, "toggleModeButton"},
                                                    {Section::presets, "presetNameField"},
                                                    {Section::base, "baseReadAgainButton"}}) {
    visit(section);
    focus(control);
    const Lines visited = visitedDuring([this] { whileReading([] {}); });
    for (const char* const destructive : {"trashButton", "factoryResetButton"}) {
      EXPECT_FALSE(touches(visited, destructive)) << control;
    }
    EXPECT_EQ(focused(), control);
  }
}

TEST_F(Focus, TabGoesOnFromWhereTheDisabledControlIs) {
  openPresets();
  applyOf(mine(1)).setFocus(Qt::TabFocusReason);
  whileReading([this] {
    press(Qt::Key_Tab);
    EXPECT_EQ(place(), "Night");
  });
  EXPECT_EQ(place(), "Night");
  focus("importButton");
  whileReading([this] {
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "presetNameField");
  });
}

TEST_F(Focus, TheBinWaitsForTheBase) {
  openPresets();
  whileReading(
      [this] { EXPECT_EQ(stateOf(trashOf(mine(0))), std::string("disabled: ") + waitReason); });
  EXPECT_EQ(stateOf(trashOf(mine(0))), "enabled: Delete this preset");
}

TEST_F(Focus, ADeletedPresetLeavesItToThePage) {
  openPresets();
  for (const Lines& left : {Lines{"Wet", "Night"}, Lines{"Wet"}, Lines{}}) {
    const int last = static_cast<int>(left.size());
    trashOf(mine(std::min(1, last))).setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    settle();
    EXPECT_EQ(presetNames(), left);
    EXPECT_EQ(focused(), "presetsPage");
    press(Qt::Key_Space);
    settle();
    EXPECT_EQ(presetNames(), left);
  }
}

TEST_F(Focus, TabGoesOnFromWhereTheDeletedPresetWas) {
  openPresets();
  click(trashOf(mine(1)));
  settle();
  press(Qt::Key_Tab);
  EXPECT_EQ(place(), "Night");
}

TEST_F(Focus, AnotherSectionNeverBeginsOnAButtonThatDestroys) {
  openWithoutBase();
  model().importSettings([this] {
    std::filesystem::path file = directory_ / "wet.json";
    putFile(file, encodePresets({presetOf("Wet", {{P::forceFeedback, 80}})}));
    return file;
  }());
  settle();
  for (const Section from : allSections) {
    for (const Section to : allSections) {
      visit(from);
      visit(to);
      const QWidget* const widget = QApplication::focusWidget();
      EXPECT_TRUE(widget == nullptr || !isDestructive(*widget)) << focused();
    }
  }
}

TEST_F(Focus, ASectionGivesItToTheControlThatHadIt) {
  openPresets();
  applyOf(mine(1)).setFocus(Qt::TabFocusReason);
  press(Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(focused(), "rereadButton");
  press(Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(place(), "Dry: applyButton");
}

TEST_F(Focus, NoPageIsRinged) {
  openPresets();
  press(Qt::Key_Tab);
  trashOf(mine(1)).setFocus(Qt::TabFocusReason);
  press(Qt::Key_Space);
  settle();
  ASSERT_EQ(focused(), "presetsPage");
  whileReading([this] { EXPECT_FALSE(window().findChild<FocusRing*>()->isVisible()); });
}

}  // namespace
}  // namespace quorvane
