#include <gtest/gtest.h>

#include <QLineEdit>
#include <string>

#include "tests/ui/window_fixture.h"
#include "ui/kit/theme.h"

// The bar of the last write, and Undo and Redo in the window.
namespace quorvane {
namespace {

using P = TuningParameter;

class Undoing : public WindowTest {
 protected:
  void save(const std::vector<ParameterValue>& values) {
    for (const auto& [parameter, value] : values) stage(parameter, value);
    model().saveStaged();
    settle();
    takeLog();
  }

  bool hasBar() { return exists("savedBar") && isVisible("savedBar"); }

  void undoByKey() {
    press(Qt::Key_Z, Qt::ControlModifier);
    settle();
  }

  void redoByKey() {
    press(Qt::Key_Y, Qt::ControlModifier);
    settle();
  }

  std::string entry(const char* name) { return stateOf(find<QAction>(name)); }
};

TEST_F(Undoing, TheBarTellsWhatWasSavedInThePlaceOfTheSaveBar) {
  open();
  EXPECT_FALSE(hasBar());
  stage(P::forceFeedback, 80);
  const int height = find("saveBar").height();
  model().discardStaged();
  save({{P::sensitivity, 800}, {P::forceFeedback, 80}, {P::vibration, 50}});
  EXPECT_TRUE(hasBar());
  EXPECT_EQ(text("savedTitle"), "Saved 3 to set C (Custom)");
  EXPECT_NE(text("savedNote"), "");
  EXPECT_EQ(find("savedBar").height(), height);
  EXPECT_EQ(state("savedUndoButton"), "enabled: Write the former values back (Ctrl+Z)");
}

TEST_F(Undoing, TheBarEndsWithXTheNextEditAnotherSetAndTheBase) {
  open();
  int force = 70;
  const auto again = [&] {
    save({{P::forceFeedback, ++force}});
    ASSERT_TRUE(hasBar());
  };
  again();
  click("savedCloseButton");
  EXPECT_FALSE(hasBar());
  again();
  stage(P::vibration, 50);
  EXPECT_FALSE(hasBar());
  model().discardStaged();
  settle();
  EXPECT_FALSE(hasBar());
  again();
  model().selectSlot(3);
  settle();
  EXPECT_FALSE(hasBar());
  model().selectSlot(2);
  settle();
  EXPECT_FALSE(hasBar());
  again();
  base().unplug();
  settle();
  base().plug();
  settle();
  EXPECT_FALSE(hasBar());
}

TEST_F(Undoing, UndoAndRedoInTheBar) {
  open();
  save({{P::forceFeedback, 80}, {P::vibration, 50}});
  click("savedUndoButton");
  settle();
  EXPECT_EQ(takeLog(), Lines{"[log] Undid 2 changes in set C (Custom)"});
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
  EXPECT_EQ(text("savedTitle"), "Undone");
  EXPECT_TRUE(text("savedNote").starts_with("2 values in set C (Custom), "));
  EXPECT_EQ(text("savedUndoButton"), "Redo");
  click("savedUndoButton");
  settle();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_EQ(text("savedTitle"), "Redone");
  EXPECT_EQ(text("savedUndoButton"), "Undo");
}

TEST_F(Undoing, AValueTurnedSinceIsNamedInTheBar) {
  open();
  save({{P::forceFeedback, 80}, {P::vibration, 50}});
  base().turn(P::forceFeedback, 40);
  settle();
  undoByKey();
  EXPECT_EQ(text("savedTitle"), "Undone");
  EXPECT_TRUE(text("savedNote").ends_with("left alone, changed since: FF 40 %"));
  EXPECT_EQ(valueOnBase(P::forceFeedback), 40);
}

TEST_F(Undoing, AnAppliedPresetHasTheBarToo) {
  open();
  model().apply(presetOf("<b>Wet</b>", {{P::forceFeedback, 70}, {P::vibration, 80}}));
  settle();
  EXPECT_EQ(text("savedTitle"), "Applied 2 to set C (Custom)");
  EXPECT_TRUE(text("savedNote").ends_with("\"<b>Wet</b>\""));
  undoByKey();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
}

TEST_F(Undoing, WhatWasNotTakenIsTold) {
  open();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::vibration}; });
  save({{P::forceFeedback, 80}, {P::vibration, 50}});
  EXPECT_FALSE(hasBar());
  model().discardStaged();
  settle();
  EXPECT_EQ(text("savedTitle"), "Saved 1 of 2 to set C (Custom)");
}

TEST_F(Undoing, AWriteThatIsNotInTheHistorySaysSo) {
  open();
  std::filesystem::create_directory(state_ / historyFileName(info(0)));
  save({{P::forceFeedback, 80}});
  EXPECT_NE(text("savedNote").find("Not in the history: "), std::string::npos);
  EXPECT_EQ(state("savedUndoButton"), "disabled: There is nothing to undo");
}

TEST_F(Undoing, KeysGoBackStepByStepAndForthAgain) {
  open();
  save({{P::forceFeedback, 80}});
  save({{P::vibration, 50}});
  focus("FFSlider");
  undoByKey();
  EXPECT_EQ(valueOnBase(P::vibration), 100);
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  undoByKey();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
  EXPECT_EQ(entry("undoAction"), "disabled: There is nothing to undo");
  redoByKey();
  redoByKey();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_EQ(valueOnBase(P::vibration), 50);
  EXPECT_EQ(entry("redoAction"), "disabled: There is nothing to redo");
}

TEST_F(Undoing, WithEditsTheKeyTakesTheLastOneBack) {
  open();
  save({{P::forceFeedback, 80}});
  takeTranscript();
  stage(P::vibration, 50);
  stage(P::naturalInertia, 9);
  EXPECT_EQ(entry("redoAction"), "disabled: Save or discard the unsaved changes first");
  undoByKey();
  EXPECT_EQ(staged(), "SHO=50");
  redoByKey();
  undoByKey();
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(takeTranscript(), Lines{});
  undoByKey();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
}

TEST_F(Undoing, AnotherSetHasToBeChosenFirst) {
  open();
  save({{P::forceFeedback, 80}});
  model().selectSlot(3);
  settle();
  takeTranscript();
  EXPECT_EQ(entry("undoAction"),
            "disabled: Choose set C (Custom) of the standard menu first: the values were written "
            "there");
  undoByKey();
  EXPECT_EQ(takeTranscript(), Lines{});
  model().selectSlot(2);
  settle();
  EXPECT_EQ(entry("undoAction"), "enabled");
}

TEST_F(Undoing, OnPresetsTheKeyIsThatOfThePresets) {
  open();
  save({{P::forceFeedback, 80}});
  model().saveCurrentAsPreset("Spa");
  visit(Section::presets);
  model().deletePreset(TuningPreset(model().userPresets().front()));
  takeTranscript();
  undoByKey();
  EXPECT_EQ(model().userPresets().size(), 1U);
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  trigger("undoAction");
  EXPECT_EQ(window().section(), Section::tuning);
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  undoByKey();
  EXPECT_EQ(valueOnBase(P::forceFeedback), 65);
}

TEST_F(Undoing, ElsewhereTheKeyOnlyShowsTuning) {
  open();
  save({{P::forceFeedback, 80}});
  visit(Section::log);
  undoByKey();
  EXPECT_EQ(window().section(), Section::tuning);
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
}

TEST_F(Undoing, InATextFieldTheKeyIsThatOfTheField) {
  open();
  save({{P::forceFeedback, 80}});
  visit(Section::presets);
  focus("presetNameField");
  type("ab");
  takeTranscript();
  undoByKey();
  EXPECT_NE(find<QLineEdit>("presetNameField").text(), QStringLiteral("ab"));
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Undoing, TheBarWaitsForTheBaseAndStaysMeanwhile) {
  open();
  save({{P::forceFeedback, 80}});
  whileReading([this] {
    EXPECT_TRUE(hasBar());
    EXPECT_EQ(state("savedUndoButton"), std::string("disabled: ") + waitReason);
  });
  atPause(
      0, [this] { model().undo(); }, [this] { EXPECT_TRUE(hasBar()); });
  EXPECT_EQ(text("savedTitle"), "Undone");
}

}  // namespace
}  // namespace quorvane
