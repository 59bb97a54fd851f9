#include "ui/presets/preset_list.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"
#include "ui/model/window_state.h"
#include "ui/presets/preset_row.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class PresetListTest : public WindowTest {
 protected:
  // Opens the section with this many user presets.
  void openMany(int count) {
    std::vector<TuningPreset> presets;
    presets.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
      presets.push_back(presetOf("Preset " + std::to_string(i), {{P::forceFeedback, 80}}));
    }
    WindowState::setFlag(QStringLiteral("presets/compactOffered"), true);
    putFile(directory_ / "presets.json", encodePresets(presets));
    open();
    visit(Section::presets);
    ASSERT_EQ(model().userPresets().size(), presets.size());
  }

  PresetList& list() { return *find("minePresets").findChild<PresetList*>(); }
  QScrollBar& bar() {
    return *find("presetsPage").findChildren<QScrollArea*>().front()->verticalScrollBar();
  }

  void scrollTo(int y) {
    bar().setValue(y);
    settle();
  }

  PresetRow* rowOf(const std::string& name) {
    for (PresetRow* const row : list().rows()) {
      if (row->preset().name == name) return row;
    }
    return nullptr;
  }

  // The y position of the preset's row in the window; -1 without a row.
  int heightOf(const std::string& name) {
    const PresetRow* const row = rowOf(name);
    return row == nullptr ? -1 : row->mapTo(&window(), QPoint()).y();
  }

  // Removes a preset through the model, not through the page.
  void remove(std::size_t number) {
    model().deletePreset(model().userPresets().at(number));
    settle();
  }

  // The widget with the focus: "Preset 7" for a row, "Preset 7: applyButton" in it.
  std::string place() {
    for (const PresetRow* const row : list().rows()) {
      if (row->hasFocus()) return row->preset().name;
      if (row->isAncestorOf(QApplication::focusWidget())) {
        return row->preset().name + ": " + focused();
      }
    }
    return focused();
  }
};

TEST_F(PresetListTest, MakesOnlyRowsNearWhatIsInView) {
  openMany(600);
  EXPECT_GT(list().rows().size(), 3U);
  EXPECT_LT(list().rows().size(), 30U);
  EXPECT_EQ(list().count(), 600U);
  EXPECT_EQ(heightOf("Preset 599"), -1);
}

TEST_F(PresetListTest, CostsTheSameForAnyNumberOfPresets) {
  std::vector<std::size_t> widgets;
  for (const int count : {75, 600}) {
    openMany(count);
    widgets.push_back(
        static_cast<std::size_t>(find("presetsPage").findChildren<QWidget*>().size()));
    closeWindow();
    end();
  }
  EXPECT_EQ(widgets[0], widgets[1]);
}

TEST_F(PresetListTest, HasRoomForEveryRow) {
  openMany(600);
  const PresetRow& first = *rowOf("Preset 0");
  EXPECT_EQ(list().height(), 600 * (first.height() + 1) - 1);
  EXPECT_EQ(rowOf("Preset 3")->y(), 3 * (first.height() + 1));
}

TEST_F(PresetListTest, HasRoomForNotes) {
  std::vector<TuningPreset> presets;
  for (const std::string& notes :
       {std::string(), std::string("Gain 78 %"), std::string(400, 'x')}) {
    presets.push_back(presetOf("Preset", {{P::forceFeedback, 80}}));
    presets.back().notes = notes;
  }
  const std::vector<TuningPreset> three = presets;
  for (int i = 0; i < 30; ++i) presets.insert(presets.end(), three.begin(), three.end());
  for (TuningPreset& preset : presets) preset.id = UUID::random();
  WindowState::setFlag(QStringLiteral("presets/compactOffered"), true);
  putFile(directory_ / "presets.json", encodePresets(presets));
  open();
  visit(Section::presets);
  scrollTo(bar().maximum() / 2);
  int line = 0;
  for (const PresetRow* const row : list().rows()) {
    EXPECT_EQ(row->height(), row->heightForWidth(row->width())) << row->preset().notes;
    if (const auto* const notes = row->findChild<QWidget*>(QStringLiteral("presetNotes"))) {
      line = line == 0 ? notes->fontMetrics().height() : line;
      EXPECT_EQ(notes->height(), row->preset().notes.size() > 100 ? 2 * line : line);
    }
  }
  EXPECT_GT(line, 0);
  const auto rows = list().rows();
  EXPECT_EQ(rows[1]->y(), rows[0]->geometry().bottom() + 2);
}

TEST_F(PresetListTest, MakesTheRowsThatScrollIntoView) {
  openMany(600);
  scrollTo(bar().maximum());
  ASSERT_NE(rowOf("Preset 599"), nullptr);
  EXPECT_TRUE(find("applyButton", *rowOf("Preset 599")).isEnabled());
  EXPECT_EQ(rowOf("Preset 300"), nullptr);
  EXPECT_LT(list().rows().size(), 60U);
}

TEST_F(PresetListTest, RowsThatAreFarAwayGoAgain) {
  openMany(600);
  std::size_t most = 0;
  for (int y = 0; y < bar().maximum(); y += 10 * bar().pageStep()) {
    scrollTo(y);
    scrollTo(y + bar().pageStep());
    most = std::max(most, list().rows().size());
  }
  EXPECT_LT(most, 130U);
  EXPECT_EQ(rowOf("Preset 0"), nullptr);
  scrollTo(0);
  EXPECT_NE(rowOf("Preset 0"), nullptr);
}

TEST_F(PresetListTest, TheRowWithTheFocusStays) {
  openMany(600);
  find("applyButton", *rowOf("Preset 2")).setFocus(Qt::TabFocusReason);
  scrollTo(bar().maximum());
  scrollTo(bar().maximum() / 2);
  EXPECT_EQ(place(), "Preset 2: applyButton");
  EXPECT_EQ(rowOf("Preset 0"), nullptr);
}

TEST_F(PresetListTest, TheTabKeyReachesRowsThatWereNotInView) {
  openMany(40);
  rowOf("Preset 0")->setFocus(Qt::TabFocusReason);
  for (int i = 0; i < 40; ++i) {
    EXPECT_EQ(place(), "Preset " + std::to_string(i));
    press(Qt::Key_Tab);
  }
  EXPECT_EQ(focused(), "presetNameField");
}

TEST_F(PresetListTest, TheTabKeyLeavesTheEndAfterAJumpThere) {
  openMany(200);
  scrollTo(bar().maximum());
  find("trashButton", *rowOf("Preset 199")).setFocus(Qt::TabFocusReason);
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), "presetNameField");
}

TEST_F(PresetListTest, WhatIsInViewStaysWhenRowsAboveVanish) {
  openMany(60);
  scrollTo(bar().maximum() / 2);
  const std::string shown = list().rows()[list().rows().size() - 8]->preset().name;
  const int height = heightOf(shown);
  ASSERT_GT(height, 0);
  for (const std::size_t gone : {0U, 2U, 1U}) {
    remove(gone);
    EXPECT_EQ(heightOf(shown), height);
  }
}

TEST_F(PresetListTest, ANewPresetIsScrolledToAndMarked) {
  openMany(60);
  model().saveCurrentAsPreset("New");
  settle();
  const PresetRow* const row = rowOf("New");
  ASSERT_NE(row, nullptr);
  EXPECT_TRUE(row->isMarked());
  EXPECT_FALSE(row->visibleRegion().isEmpty());
  rowOf("Preset 59")->setFocus(Qt::TabFocusReason);
  settle();
  EXPECT_FALSE(row->isMarked());
}

TEST_F(PresetListTest, WhatAnotherProgramSavesMovesNothing) {
  openMany(60);
  scrollTo(bar().maximum() / 2);
  const std::string shown = list().rows()[list().rows().size() - 8]->preset().name;
  find("applyButton", *rowOf(shown)).setFocus(Qt::TabFocusReason);
  const int height = heightOf(shown);
  std::vector<TuningPreset> presets = model().userPresets();
  presets.erase(presets.begin(), presets.begin() + 3);
  presets.push_back(presetOf("New", {}));
  PresetStore(directory_ / "presets.json").save(presets);
  waitUntil([&] { return model().userPresets() == presets; });
  settle();
  EXPECT_EQ(heightOf(shown), height);
  EXPECT_EQ(place(), shown + ": applyButton");
}

TEST_F(PresetListTest, TheFocusStaysOnItsPreset) {
  openMany(60);
  scrollTo(bar().maximum() / 2);
  const std::string name = list().rows()[list().rows().size() - 8]->preset().name;
  find("trashButton", *rowOf(name)).setFocus(Qt::TabFocusReason);
  const int scrolled = bar().maximum() - bar().value();
  remove(0);
  remove(5);
  remove(57);
  EXPECT_EQ(place(), name + ": trashButton");
  EXPECT_GE(scrolled, 0);
}

TEST_F(PresetListTest, TheFocusOfADeletedPresetGoesToThePage) {
  openMany(60);
  find("trashButton", *rowOf("Preset 2")).setFocus(Qt::TabFocusReason);
  remove(2);
  EXPECT_EQ(focused(), "presetsPage");
  press(Qt::Key_Tab);
  EXPECT_EQ(place(), "Preset 3");
}

TEST_F(PresetListTest, AChangedPresetKeepsTheFocusOnItsButton) {
  openMany(5);
  std::vector<TuningPreset> presets = model().userPresets();
  find("applyButton", *rowOf("Preset 2")).setFocus(Qt::TabFocusReason);
  presets[2].name = "Changed";
  presets.insert(presets.begin(), presetOf("New", {}));
  list().setPresets(presets);
  EXPECT_EQ(place(), "Changed: applyButton");
  EXPECT_EQ(list().rows().size(), 6U);
  EXPECT_EQ(rowOf("Changed")->y(), 3 * (rowOf("Changed")->height() + 1));
}

TEST_F(PresetListTest, OneIdMayBeThereTwice) {
  openMany(3);
  std::vector<TuningPreset> presets = model().userPresets();
  presets[1].id = presets[0].id;
  list().setPresets(presets);
  EXPECT_EQ(list().count(), 3U);
  presets.erase(presets.begin());
  list().setPresets(presets);
  EXPECT_EQ(list().count(), 2U);
}

}  // namespace
}  // namespace quorvane
