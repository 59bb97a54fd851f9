#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QImage>
#include <QTimerEvent>
#include <string>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/kit/theme.h"

// How the tuning section shows what the base took and what it did not.
namespace quorvane {
namespace {

using P = TuningParameter;

class SaveOutcome : public WindowTest {
 protected:
  // Saves three edits, of which the base ignores that of FF.
  void saveWithOneNotTaken() {
    behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
    stage(P::sensitivity, 800);
    stage(P::forceFeedback, 80);
    stage(P::naturalInertia, 9);
    model().saveStaged();
    settle();
    takeLog();
    takeTranscript();
  }

  void takeEverything() {
    behave([](SimulatedBehaviour& b) { b.ignored.clear(); });
  }

  QImage image(const std::string& widget) { return find(widget).grab().toImage(); }

  bool shows(const std::string& widget, const QColor& colour) {
    const QImage shown = image(widget);
    for (int y = 0; y < shown.height(); ++y) {
      for (int x = 0; x < shown.width(); ++x) {
        if (shown.pixelColor(x, y) == colour) return true;
      }
    }
    return false;
  }

  bool showsTryAgain() { return exists("FFTryAgain") && isVisible("FFTryAgain"); }

  // Makes a row's only timer fire now.
  void endTimer(const std::string& row) {
    QWidget& widget = find(row);
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(&widget);
    ASSERT_EQ(timers.size(), 1);
    QTimerEvent event(timers.front().timerId);
    QApplication::sendEvent(&widget, &event);
    settle();
  }

  // The widths of the save bar's line in the colour of unsaved values, at its upper edge.
  int progressWidth() {
    const QImage bar = image("saveBar");
    int width = 0;
    while (width < bar.width() && bar.pixelColor(width, 1) == theme().signal) ++width;
    return width;
  }
};

TEST_F(SaveOutcome, ARefusedValueLooksRefused) {
  open();
  stage(P::forceFeedback, 80);
  EXPECT_FALSE(exists("FFTryAgain"));
  EXPECT_EQ(image("FFRow").pixelColor(1, 10), theme().signal);
  saveWithOneNotTaken();
  EXPECT_TRUE(showsTryAgain());
  EXPECT_EQ(text("FFTryAgain"), "Try again");
  EXPECT_EQ(name("FFTryAgain"), "Force feedback strength, try again");
  EXPECT_EQ(image("FFRow").pixelColor(1, 10), theme().error);
  EXPECT_TRUE(shows("FFRow", theme().errorGround));
  EXPECT_TRUE(shows("FFRow", theme().errorPlate));
  EXPECT_TRUE(shows("FFReadout", theme().error));
  EXPECT_TRUE(shows("FFSlider", theme().error));
  EXPECT_FALSE(shows("FFSlider", theme().signal));
  EXPECT_TRUE(isVisible("FFRevert"));
  EXPECT_EQ(text("FFReadout"), "80 %");
}

TEST_F(SaveOutcome, TheNameOfARefusedRowSaysSo) {
  open();
  saveWithOneNotTaken();
  for (const char* const part : {"FFRow", "FFSlider", "FFReadout"}) {
    EXPECT_EQ(name(part), "Force feedback strength, 80 %, was 65 %, not taken, still 65 %");
  }
}

TEST_F(SaveOutcome, EveryControlCanLookRefused) {
  open();
  behave([](SimulatedBehaviour& b) {
    b.ignored = {P::sensitivity, P::forceFeedbackScaling, P::analogPaddles};
  });
  stage(P::sensitivity, 0);
  stage(P::forceFeedbackScaling, 0);
  stage(P::analogPaddles, 2);
  model().saveStaged();
  settle();
  for (const char* const control : {"SENToggle", "FFSSegments", "ACPPicker"}) {
    EXPECT_TRUE(shows(control, theme().error)) << control;
    EXPECT_FALSE(shows(control, theme().signal)) << control;
  }
}

TEST_F(SaveOutcome, TheSaveBarCountsWhatWasNotTaken) {
  open();
  stage(P::vibration, 50);
  EXPECT_FALSE(isVisible("saveFailure"));
  EXPECT_FALSE(shows("saveBar", theme().error));
  model().discardStaged();
  saveWithOneNotTaken();
  EXPECT_EQ(text("unsavedCount"), "1 unsaved change");
  EXPECT_TRUE(isVisible("saveFailure"));
  EXPECT_EQ(text("saveFailure"), "2 saved, 1 not taken");
  EXPECT_TRUE(shows("saveBar", theme().error));
  stage(P::vibration, 50);
  EXPECT_EQ(text("unsavedCount"), "2 unsaved changes");
  EXPECT_EQ(text("saveFailure"), "2 saved, 1 not taken");
  click("FFTryAgain");
  settle();
  EXPECT_EQ(text("saveFailure"), "1 not taken");
  stage(P::forceFeedback, 81);
  EXPECT_FALSE(isVisible("saveFailure"));
  EXPECT_FALSE(shows("saveBar", theme().error));
}

TEST_F(SaveOutcome, TryAgainWritesTheOneValue) {
  open();
  saveWithOneNotTaken();
  takeEverything();
  stage(P::vibration, 50);
  click("FFTryAgain");
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "50", "09"), commitPause, menuRequest}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 1 change…", "[log] Saved 1 change to set C (Custom)"}));
  EXPECT_EQ(staged(), "SHO=50");
  EXPECT_FALSE(showsTryAgain());
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 80 %");
}

TEST_F(SaveOutcome, CtrlReturnTriesAgainWhereTheRowWasRefused) {
  open();
  saveWithOneNotTaken();
  focus("SHOSlider");
  press(Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_EQ(takeTranscript(), Lines{});
  takeEverything();
  focus("FFSlider");
  press(Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("d1", "50", "09"), commitPause, menuRequest}));
  EXPECT_EQ(staged(), "");
}

TEST_F(SaveOutcome, TryAgainWaitsForTheBase) {
  open();
  saveWithOneNotTaken();
  whileReading([this] {
    EXPECT_FALSE(find("FFTryAgain").isEnabled());
    EXPECT_TRUE(showsTryAgain());
  });
  EXPECT_TRUE(find("FFTryAgain").isEnabled());
}

TEST_F(SaveOutcome, TheNextEditEndsIt) {
  open();
  for (const int key : {Qt::Key_Right, Qt::Key_Backspace}) {
    saveWithOneNotTaken();
    ASSERT_TRUE(showsTryAgain());
    focus("FFSlider");
    press(key);
    EXPECT_FALSE(showsTryAgain()) << key;
    EXPECT_FALSE(shows("FFRow", theme().errorGround)) << key;
    model().discardStaged();
    takeEverything();
    stage(P::sensitivity, 900);
    stage(P::naturalInertia, 5);
    model().saveStaged();
    settle();
  }
}

TEST_F(SaveOutcome, AValueThatWasTakenShowsATickForAMoment) {
  open();
  const QImage before = image("FFRow");
  stage(P::forceFeedback, 80);
  model().saveStaged();
  settle();
  EXPECT_TRUE(shows("FFRow", theme().okText));
  EXPECT_FALSE(shows("SHORow", theme().okText));
  endTimer("FFRow");
  EXPECT_FALSE(shows("FFRow", theme().okText));
  EXPECT_EQ(image("FFRow").size(), before.size());
}

TEST_F(SaveOutcome, TheTickEndsWhenAnotherSetIsShown) {
  open();
  stage(P::forceFeedback, 80);
  model().saveStaged();
  settle();
  model().selectSlot(1);
  settle();
  EXPECT_EQ(text("FFReadout"), "100 %");
  EXPECT_FALSE(shows("FFRow", theme().okText));
}

TEST_F(SaveOutcome, TheTickComesWhenTheValueIsConfirmed) {
  open();
  stage(P::sensitivity, 800);
  stage(P::forceFeedback, 80);
  atPause(
      1, [this] { model().saveStaged(); },
      [this] {
        EXPECT_TRUE(shows("SENRow", theme().okText));
        EXPECT_FALSE(shows("FFRow", theme().okText));
      });
}

TEST_F(SaveOutcome, TheLineOnTheSaveBarGrowsWithEachValue) {
  open();
  for (const int value : {0, 1, 2}) {
    stage(P::sensitivity, 800 + 10 * value);
    stage(P::forceFeedback, 80 + value);
    stage(P::naturalInertia, 9 + value);
    EXPECT_EQ(progressWidth(), 0);
    atPause(
        value, [this] { model().saveStaged(); },
        [&] {
          EXPECT_EQ(progressWidth(), qRound(find("saveBar").width() * value / 3.0));
          const std::string number = std::to_string(value);
          EXPECT_EQ(text("unsavedCount"), "Saving " + number + " of 3…");
          EXPECT_EQ(text("progress"), number + " of 3");
        });
  }
}

TEST_F(SaveOutcome, ApplyingAPresetOverAnEditSaysThatItIsStillUnsaved) {
  open();
  stage(P::vibration, 50);
  const QImage before = image("SHORow");
  model().apply(presetOf("Wet", {{P::vibration, 80}, {P::forceFeedback, 70}}));
  settle();
  EXPECT_EQ(staged(), "SHO=50");
  EXPECT_EQ(name("SHOSlider"), "Wheel vibration motor, 50 %, was 80 %, still unsaved");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 70 %");
  EXPECT_NE(image("SHORow"), before);
  stage(P::vibration, 60);
  EXPECT_EQ(name("SHOSlider"), "Wheel vibration motor, 60 %, was 80 %");
}

}  // namespace
}  // namespace quorvane
