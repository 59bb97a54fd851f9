#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

// How the tuning section shows a save.
class Saving : public WindowTest {
 protected:
  void openWithThree() {
    open();
    stage(P::sensitivity, 800);
    stage(P::forceFeedback, 80);
    stage(P::naturalInertia, 9);
  }

  // Saves, and calls `look` while the n-th value is being written, n from 0.
  void atValue(int value, const std::function<void()>& look) {
    atPause(
        value, [this] { click("saveButton"); }, look);
  }

  // Which of the three rows still show a change: "FF NIN".
  std::string changedRows() {
    std::string codes;
    for (const char* const code : {"SEN", "FF", "NIN"}) {
      if (!isVisible(std::string(code) + "Revert")) continue;
      codes += (codes.empty() ? "" : " ") + std::string(code);
    }
    return codes;
  }
};

TEST_F(Saving, WritesInMenuOrderAndEndsWithoutABar) {
  openWithThree();
  EXPECT_EQ(text("unsavedCount"), "3 unsaved changes");
  click("saveButton");
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "41", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "50", "05"), commitPause, menuRequest,  //
                                     writeOf("d1", "50", "09"), commitPause, menuRequest}));
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 3 changes…", "[log] Saved 3 changes to set C (Custom)"}));
  EXPECT_FALSE(isVisible("saveBar"));
  EXPECT_EQ(changedRows(), "");
  EXPECT_EQ(text("FFReadout"), "80 %");
  EXPECT_EQ(text("statusLine"), "Saved 3 changes to set C (Custom)");
}

TEST_F(Saving, CountsTheValuesAndClearsTheirRowsOneByOne) {
  struct Case {
    int value;
    std::string count;
    std::string progress;
    std::string changed;
  };
  const std::vector<Case> cases{{0, "Saving 0 of 3…", "0 of 3", "SEN FF NIN"},
                                {1, "Saving 1 of 3…", "1 of 3", "FF NIN"},
                                {2, "Saving 2 of 3…", "2 of 3", "NIN"}};
  for (const auto& [value, count, progress, changed] : cases) {
    openWithThree();
    atValue(value, [&, wanted = count, line = progress, rows = changed] {
      EXPECT_EQ(text("unsavedCount"), wanted);
      EXPECT_EQ(text("progress"), line);
      EXPECT_EQ(changedRows(), rows);
      EXPECT_EQ(text("FFReadout"), "80 %");
      EXPECT_EQ(staged(), "SEN=800 FF=80 NIN=9");
    });
    EXPECT_EQ(changedRows(), "");
    closeWindow();
    end();
    simulate([](SimulatedBase& simulated) {
      simulated.menu().put(P::sensitivity, 900);
      simulated.menu().put(P::forceFeedback, 65);
      simulated.menu().put(P::naturalInertia, 5);
    });
  }
}

TEST_F(Saving, TheRowsThatAreSavedSayWhatTheyAreNow) {
  openWithThree();
  atValue(1, [this] {
    EXPECT_EQ(name("SENSlider"), "Sensitivity (steering angle), 800 deg");
    EXPECT_EQ(name("FFSlider"), "Force feedback strength, 80 %, was 65 %");
  });
}

TEST_F(Saving, NothingCanBePressedMeanwhile) {
  openWithThree();
  const std::string wait = std::string("disabled: ") + waitReason;
  atValue(1, [&] {
    for (const char* const control :
         {"saveButton", "discardButton", "FFSlider", "FFRevert", "switchModeButton"}) {
      EXPECT_EQ(state(control), wait) << control;
    }
    EXPECT_FALSE(find<QAction>("saveAction").isEnabled());
    EXPECT_TRUE(isVisible("busySpinner"));
  });
}

TEST_F(Saving, WhatTheBaseRefusesStaysStaged) {
  openWithThree();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  click("saveButton");
  settle();
  const std::string told =
      "Saved 2 of 3; the base rejected FF: The base ignored the FF write; it still reports 65";
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 3 changes…", "[error] " + told}));
  EXPECT_EQ(text("statusLine"), told);
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(changedRows(), "FF");
  EXPECT_EQ(text("unsavedCount"), "1 unsaved change");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 80 %, was 65 %, not taken, still 65 %");
  behave([](SimulatedBehaviour& b) { b.ignored.clear(); });
  click("saveButton");
  settle();
  EXPECT_EQ(changedRows(), "");
}

TEST_F(Saving, ARefusedValueShowsAsChangedWhileTheRestIsWritten) {
  openWithThree();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::sensitivity}; });
  atValue(2, [this] {
    EXPECT_EQ(text("unsavedCount"), "Saving 2 of 3…");
    EXPECT_EQ(changedRows(), "SEN NIN");
  });
  EXPECT_EQ(staged(), "SEN=800");
}

TEST_F(Saving, TheFocusComesBackToTheRow) {
  openWithThree();
  focus("FFSlider");
  press(Qt::Key_S, Qt::ControlModifier);
  settle();
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(focused(), "FFSlider");
}

TEST_F(Saving, TheBarGivesTheFocusBackToTheRowWhenItGoes) {
  open();
  std::int64_t value = 50;
  for (const char* const button : {"saveButton", "discardButton"}) {
    stage(P::vibration, ++value);
    settle();
    focus("FFSlider");
    focus(button);
    press(Qt::Key_Space);
    settle();
    EXPECT_EQ(staged(), "");
    EXPECT_EQ(focused(), "FFSlider") << button;
  }
}

TEST_F(Saving, WhatIsStillBeingTypedIsSavedToo) {
  open();
  stage(P::vibration, 50);
  focus("FFReadout");
  type("80");
  press(Qt::Key_S, Qt::ControlModifier);
  settle();
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Saving 2 changes…", "[log] Saved 2 changes to set C (Custom)"}));
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
}

TEST_F(Saving, WhatIsStillBeingTypedIsDiscardedToo) {
  open();
  stage(P::vibration, 50);
  focus("FFReadout");
  type("80");
  press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(text("FFReadout"), "65 %");
}

TEST_F(Saving, AfterTheBarHasGoneTheKeyboardIsNotLost) {
  openWithThree();
  focus("saveButton");
  press(Qt::Key_Space);
  settle();
  EXPECT_FALSE(isVisible("saveBar"));
  press(Qt::Key_Tab);
  EXPECT_NE(focused(), "nothing");
}

TEST_F(Saving, TheAutomaticAngleIsSavedLikeAnyOther) {
  open();
  stage(P::sensitivity, 0);
  stage(P::forceFeedback, 80);
  atValue(1, [this] {
    EXPECT_FALSE(isVisible("SENRevert"));
    EXPECT_EQ(text("SENReadout"), "AUT");
  });
  EXPECT_EQ(valueOnBase(P::sensitivity), 2530);
}

TEST_F(Saving, APresetThatIsAppliedLeavesTheCountOfEditsAlone) {
  openWithThree();
  atPause(
      1, [this] { model().apply(TuningPreset::builtIn().front()); },
      [this] {
        EXPECT_EQ(text("unsavedCount"), "3 unsaved changes");
        EXPECT_EQ(text("progress"), "1 of 14");
      });
}

TEST_F(Saving, DiscardLeavesTheBaseAlone) {
  openWithThree();
  click("discardButton");
  EXPECT_EQ(takeLog(), (Lines{"[log] Discarded 3 unsaved changes"}));
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(changedRows(), "");
  EXPECT_EQ(text("FFReadout"), "65 %");
}

TEST_F(Saving, ABaseThatLeavesInTheMiddleLeavesTheMessage) {
  openWithThree();
  atValue(1, [this] {
    base().unplug();
    waitUntil([this] { return model().statusLine() == noBaseStatus; });
    render();
    EXPECT_TRUE(isVisible("tuningMessage"));
    EXPECT_FALSE(isVisible("saveBar"));
  });
  EXPECT_TRUE(isVisible("tuningMessage"));
  EXPECT_FALSE(isVisible("progress"));
}

}  // namespace
}  // namespace quorvane
