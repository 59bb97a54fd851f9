#include "ui/tuning/parameter_row.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QSpinBox>
#include <QTest>
#include <QTimerEvent>
#include <cmath>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/kit/pickers.h"
#include "ui/kit/theme.h"
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class Row : public WindowTest {
 protected:
  ValueSlider& slider(const std::string& code) { return find<ValueSlider>(code + "Slider"); }
  bool isOn(const std::string& toggle) { return find<Toggle>(toggle).isChecked(); }

  void save() {
    model().saveStaged();
    settle();
  }

  // Opens the window on a base whose active set has this value.
  void openWith(TuningParameter parameter, std::int64_t value) {
    simulate([=](SimulatedBase& simulated) { simulated.menu().put(parameter, value); });
    open();
  }

  // The position of a value on a row's slider. The track has a margin of 9 pixels.
  QPoint placeOf(const ValueSlider& on, int value) {
    const double part = double(value - on.minimum()) / (on.maximum() - on.minimum());
    return {static_cast<int>(std::lround(9 + (on.width() - 18) * part)), on.height() / 2};
  }

  // Clicks the minus or the plus of a readout.
  void clickStep(const std::string& readout, bool plus) {
    QWidget& widget = find(readout);
    const int x = plus ? widget.width() - 10 : 10;
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, {x, widget.height() / 2});
    settle();
  }

  // Makes a row's only timer fire now.
  void endTimers(const std::string& row) {
    QWidget& widget = find(row);
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(&widget);
    EXPECT_EQ(timers.size(), 1);
    for (const auto& timer : timers) {
      QTimerEvent event(timer.timerId);
      QApplication::sendEvent(&widget, &event);
    }
    settle();
  }

  bool hasTimer(const std::string& row) {
    return !QAbstractEventDispatcher::instance()->registeredTimers(&find(row)).isEmpty();
  }
};

// The initial state of a row's slider and readout.
struct Scale {
  std::string code;
  int lowest;
  int highest;
  int step;
  std::string shown;
};

struct Scales {
  std::int64_t product;
  std::vector<Scale> rows;
};

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test framework looks for
void PrintTo(const Scales& test, std::ostream* out) { *out << test.product; }

class RowOfProduct : public Row, public testing::WithParamInterface<Scales> {};

TEST_P(RowOfProduct, CoversTheRangeInSteps) {
  attach(GetParam().product);
  open();
  for (const auto& [code, lowest, highest, step, shown] : GetParam().rows) {
    SCOPED_TRACE(code);
    const auto& readout = find<QSpinBox>(code + "Readout");
    EXPECT_EQ(slider(code).minimum(), lowest);
    EXPECT_EQ(slider(code).maximum(), highest);
    EXPECT_EQ(slider(code).singleStep(), step);
    EXPECT_EQ(readout.minimum(), lowest);
    EXPECT_EQ(readout.maximum(), highest);
    EXPECT_EQ(readout.singleStep(), step);
    EXPECT_EQ(text(code + "Readout"), shown);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Products, RowOfProduct,
    testing::Values(Scales{0x0020,
                           {{"SEN", 90, 2520, 10, "900 deg"},
                            {"FF", 0, 100, 1, "65 %"},
                            {"SHO", 0, 100, 10, "100 %"},
                            {"BLI", 0, 100, 1, "OFF"},
                            {"FOR", 0, 120, 10, "100 %"},
                            {"SPR", 0, 120, 10, "100 %"},
                            {"DPR", 0, 120, 10, "50 %"},
                            {"NDP", 0, 100, 1, "25 %"},
                            {"NFR", 0, 100, 1, "10 %"},
                            {"brF", 0, 100, 10, "50 %"},
                            {"FEI", 0, 100, 10, "100 %"},
                            {"INT", 0, 20, 1, "11"},
                            {"NIN", 0, 100, 1, "5 %"},
                            {"FUL", 0, 100, 1, "0 %"}}},
                    Scales{0x0006, {{"SEN", 90, 2520, 10, "900 deg"}, {"NIN", 0, 100, 1, "5 %"}}},
                    Scales{0x0E03,
                           {{"SEN", 90, 1080, 10, "900 deg"},
                            {"DRI", -5, 3, 1, "0"},
                            {"BLI", 0, 100, 1, "OFF"}}},
                    Scales{0x0001, {{"SEN", 90, 900, 10, "900 deg"}, {"FF", 0, 100, 1, "65 %"}}}),
    [](const auto& test) { return "Product" + std::to_string(test.param.product); });

TEST_F(Row, TheTrackIsTwoPixelsHighAndItsFilledPartFour) {
  openWith(P::forceFeedback, 65);
  const ValueSlider& track = slider("FF");
  const QImage image = find("FFSlider").grab().toImage();
  const auto height = [&](int value, const QColor& colour) {
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y) {
      if (image.pixelColor(placeOf(track, value).x(), y) == colour) ++pixels;
    }
    return pixels;
  };
  EXPECT_EQ(height(30, theme().fill), 4);
  EXPECT_EQ(height(90, theme().track), 2);
  EXPECT_EQ(height(90, theme().fill), 0);
}

TEST_F(Row, TheTrackStopsAtTheEmptyCapOfASpecialValue) {
  open();
  const QRect cap = slider("BLI").capRect();
  const QImage image = find("BLIRow").grab().toImage();
  const QPoint place = slider("BLI").pos();
  const int middle = place.y() + slider("BLI").height() / 2;
  EXPECT_EQ(image.pixelColor(place.x() + cap.center().x() - 2, middle), theme().surface);
  EXPECT_EQ(image.pixelColor(place.x() + cap.left() - 4, middle), theme().track);
}

TEST_F(Row, PickersBeginWhereTheTracksDo) {
  open();
  const int track = find("FFSlider").x() + 9;
  EXPECT_EQ(find("FFSSegments").x(), track);
  EXPECT_EQ(find("ACPPicker").x(), track);
}

TEST_F(Row, KeysMoveTheSliderInItsStep) {
  struct Case {
    const char* slider;
    int key;
    std::string staged;
  };
  const std::vector<Case> cases{
      {"FFSlider", Qt::Key_Right, "FF=66"},    {"FFSlider", Qt::Key_Left, "FF=64"},
      {"FFSlider", Qt::Key_Up, "FF=66"},       {"FFSlider", Qt::Key_Down, "FF=64"},
      {"FFSlider", Qt::Key_PageUp, "FF=75"},   {"FFSlider", Qt::Key_PageDown, "FF=55"},
      {"FFSlider", Qt::Key_Home, "FF=0"},      {"FFSlider", Qt::Key_End, "FF=100"},
      {"SENSlider", Qt::Key_Right, "SEN=910"}, {"SENSlider", Qt::Key_PageUp, "SEN=1140"},
      {"SENSlider", Qt::Key_Home, "SEN=90"},   {"SENSlider", Qt::Key_End, "SEN=2520"},
      {"DPRSlider", Qt::Key_Left, "DPR=40"},   {"INTSlider", Qt::Key_PageUp, "INT=13"},
      {"SHOSlider", Qt::Key_Right, ""},        {"SHOReadout", Qt::Key_Down, "SHO=90"},
      {"INTReadout", Qt::Key_Up, "INT=12"}};
  open();
  for (const auto& [control, key, expected] : cases) {
    focus(control);
    press(key);
    EXPECT_EQ(staged(), expected) << control << " " << key;
    model().discardStaged();
    settle();
  }
}

TEST_F(Row, AKeyAfterAnotherGoesOnFromThere) {
  open();
  focus("FFSlider");
  press(Qt::Key_Right);
  press(Qt::Key_Right);
  EXPECT_EQ(staged(), "FF=67");
  EXPECT_EQ(text("FFReadout"), "67 %");
  press(Qt::Key_Left);
  press(Qt::Key_Left);
  EXPECT_EQ(staged(), "");
}

TEST_F(Row, WhatIsTypedIsStagedByEnterOrByLeaving) {
  struct Case {
    const char* readout;
    const char* typed;
    int end;
    std::string staged;
    std::string shown;
  };
  const std::vector<Case> cases{{"FFReadout", "80", Qt::Key_Return, "FF=80", "80 %"},
                                {"FFReadout", "80", Qt::Key_Tab, "FF=80", "80 %"},
                                {"FFReadout", "180", Qt::Key_Enter, "FF=100", "100 %"},
                                {"SHOReadout", "84", Qt::Key_Return, "SHO=80", "80 %"},
                                {"SENReadout", "1444 deg", Qt::Key_Return, "SEN=1440", "1440 deg"},
                                {"BLIReadout", "60", Qt::Key_Return, "BLI=60", "60 %"},
                                {"INTReadout", "7", Qt::Key_Return, "INT=7", "7"},
                                {"FFReadout", "80", Qt::Key_Escape, "", "65 %"},
                                {"FFReadout", "x", Qt::Key_Return, "", "65 %"},
                                {"FFReadout", "65", Qt::Key_Return, "", "65 %"}};
  open();
  for (const auto& [readout, typed, end, expected, shown] : cases) {
    focus(readout);
    type(typed);
    EXPECT_EQ(staged(), "") << "before the end of " << typed;
    press(end);
    EXPECT_EQ(staged(), expected) << typed;
    EXPECT_EQ(text(readout), shown) << typed;
    focus("sectionTuning");
    model().discardStaged();
    settle();
  }
}

TEST_F(Row, WhatIsBeingTypedIsNotTypedOverByTheBase) {
  open();
  focus("FFReadout");
  type("8");
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(text("FFReadout"), "8");
  type("0");
  press(Qt::Key_Return);
  EXPECT_EQ(staged(), "FF=80");
}

TEST_F(Row, MinusAndPlusMoveByTheStep) {
  open();
  clickStep("DPRReadout", false);
  EXPECT_EQ(staged(), "DPR=40");
  clickStep("INTReadout", true);
  EXPECT_EQ(staged(), "DPR=40 INT=12");
  clickStep("BLIReadout", false);
  EXPECT_EQ(staged(), "DPR=40 INT=12");
}

TEST_F(Row, ADragIsStagedWhenItEnds) {
  open();
  ValueSlider& ff = slider("FF");
  QTest::mousePress(&ff, Qt::LeftButton, Qt::NoModifier, placeOf(ff, 65));
  QTest::mouseMove(&ff, placeOf(ff, 80));
  settle();
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(text("FFReadout"), "80 %");
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(text("FFReadout"), "80 %");
  EXPECT_EQ(ff.value(), 80);
  QTest::mouseRelease(&ff, Qt::LeftButton, Qt::NoModifier, placeOf(ff, 90));
  settle();
  EXPECT_EQ(staged(), "FF=90");
  EXPECT_EQ(text("FFReadout"), "90 %");
}

TEST_F(Row, ADragBackToWhereItBeganStagesNothing) {
  open();
  ValueSlider& ff = slider("FF");
  QTest::mousePress(&ff, Qt::LeftButton, Qt::NoModifier, placeOf(ff, 80));
  QTest::mouseRelease(&ff, Qt::LeftButton, Qt::NoModifier, placeOf(ff, 65));
  settle();
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(text("FFReadout"), "65 %");
}

TEST_F(Row, AutoStagesTheAutomaticAngle) {
  open();
  EXPECT_EQ(text("SENToggle"), "AUTO");
  EXPECT_FALSE(isOn("SENToggle"));
  click("SENToggle");
  EXPECT_EQ(staged(), "SEN=0");
  EXPECT_TRUE(isOn("SENToggle"));
  EXPECT_EQ(text("SENReadout"), "AUT");
  EXPECT_EQ(state("SENSlider"), "disabled: Turn AUTO off to set a number");
  EXPECT_EQ(name("SENToggle"), "Sensitivity (steering angle), AUTO, on");
  EXPECT_EQ(name("SENSlider"), "Sensitivity (steering angle), AUT, was 900 deg");
  save();
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("7e", "41", "05"), commitPause, menuRequest}));
  EXPECT_EQ(text("SENReadout"), "AUT");
  EXPECT_TRUE(isOn("SENToggle"));
  EXPECT_EQ(name("SENSlider"), "Sensitivity (steering angle), AUT");
}

TEST_F(Row, AutoIsNotForABaseThatHasNoAutomaticAngle) {
  attach(0x0001);
  open();
  EXPECT_EQ(state("SENToggle"), "disabled: This base has no automatic steering angle");
  EXPECT_EQ(state("SENSlider"), "enabled");
  stage(P::sensitivity, 0);  // as a preset may
  settle();
  EXPECT_EQ(text("SENReadout"), "AUT");
  click("SENToggle");
  EXPECT_EQ(staged(), "");
}

TEST_F(Row, AutoTurnedOffStagesTheLastOrdinaryAngle) {
  open();
  click("SENToggle");
  save();
  takeTranscript();
  click("SENToggle");
  EXPECT_EQ(staged(), "SEN=900");
  EXPECT_FALSE(isOn("SENToggle"));
  EXPECT_EQ(state("SENSlider"), "enabled");
  save();
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("db", "41", "05"), commitPause, menuRequest}));
}

TEST_F(Row, AutoTurnedOnAndOffAgainIsNoChange) {
  open();
  click("SENToggle");
  click("SENToggle");
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(text("SENReadout"), "900 deg");
}

TEST_F(Row, AnAutomaticAngleIsShownAsSuch) {
  openWith(P::sensitivity, 0);
  EXPECT_EQ(valueOf(P::sensitivity), 2530);
  EXPECT_EQ(text("SENReadout"), "AUT");
  EXPECT_TRUE(isOn("SENToggle"));
  click("SENToggle");
  EXPECT_EQ(staged(), "SEN=2520");
}

TEST_F(Row, AStagedZeroIsTheAutomaticAngle) {
  open();
  stage(P::sensitivity, 0);
  EXPECT_EQ(text("SENReadout"), "AUT");
  EXPECT_TRUE(isOn("SENToggle"));
}

TEST_F(Row, AClassicBaseShowsItsAngleInDegrees) {
  attach(0x0001);
  open();
  EXPECT_EQ(text("SENReadout"), "900 deg");
  EXPECT_FALSE(isOn("SENToggle"));
}

TEST_F(Row, TheFormatOfAStagedValue) {
  open();
  for (const auto& [parameter, value, readout, shown] :
       std::vector<std::tuple<P, int, std::string, std::string>>{
           {P::brakeLevelIndicator, 100, "BLIReadout", "100 %"},
           {P::brakeLevelIndicator, 101, "BLIReadout", "OFF"},
           {P::forceFeedback, 80, "FFReadout", "80 %"},
           {P::interpolation, 7, "INTReadout", "7"},
           {P::sensitivity, 540, "SENReadout", "540 deg"}}) {
    stage(parameter, value);
    EXPECT_EQ(text(readout), shown);
  }
}

TEST_F(Row, OffStagesThatTheIndicatorIsOff) {
  openWith(P::brakeLevelIndicator, 60);
  EXPECT_EQ(text("BLIToggle"), "OFF");
  click("BLIToggle");
  EXPECT_EQ(staged(), "BLI=101");
  EXPECT_EQ(text("BLIReadout"), "OFF");
  EXPECT_FALSE(find("BLISlider").isEnabled());
  save();
  EXPECT_EQ(valueOnBase(P::brakeLevelIndicator), 101);
  click("BLIToggle");
  EXPECT_EQ(staged(), "BLI=60");
  save();
  EXPECT_EQ(valueOnBase(P::brakeLevelIndicator), 60);
  EXPECT_FALSE(isOn("BLIToggle"));
}

TEST_F(Row, OffTurnedOffLandsAtTheUpperEndWithoutAnOrdinaryValueBefore) {
  open();
  EXPECT_TRUE(isOn("BLIToggle"));
  click("BLIToggle");
  EXPECT_EQ(staged(), "BLI=100");
  focus("BLISlider");
  press(Qt::Key_Home);
  EXPECT_EQ(staged(), "BLI=0");
  click("BLIToggle");
  EXPECT_EQ(staged(), "");
  click("BLIToggle");
  EXPECT_EQ(staged(), "BLI=0");
}

TEST_F(Row, OneOfTwoSegmentsIsChosen) {
  open();
  auto& linear = find<QRadioButton>("FFSSegmentLIN");
  auto& peak = find<QRadioButton>("FFSSegmentPEA");
  EXPECT_EQ(linear.text(), QStringLiteral("LIN, Linear"));
  EXPECT_EQ(peak.text(), QStringLiteral("PEA, Peak"));
  EXPECT_TRUE(peak.isChecked());
  click(linear);
  EXPECT_EQ(staged(), "FFS=0");
  EXPECT_TRUE(linear.isChecked());
  EXPECT_EQ(name("FFSSegments"), "Force feedback scaling, LIN, was PEA");
  EXPECT_EQ(name("FFSSegmentLIN"), "Force feedback scaling, LIN, Linear");
  click(peak);
  EXPECT_EQ(staged(), "");
  save();
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Row, ArrowKeysMoveThroughTheSegments) {
  open();
  focus("FFSSegmentPEA");
  press(Qt::Key_Left);
  EXPECT_EQ(staged(), "FFS=0");
  EXPECT_EQ(focused(), "FFSSegmentLIN");
  save();
  EXPECT_EQ(valueOnBase(P::forceFeedbackScaling), 0);
  EXPECT_EQ(focused(), "FFSSegmentLIN");
}

TEST_F(Row, OneOfTheFourPaddleModesIsPicked) {
  open();
  const auto& picker = find<Picker>("ACPPicker");
  Lines titles;
  for (int i = 0; i < picker.count(); ++i) titles.push_back(picker.itemText(i).toStdString());
  EXPECT_EQ(titles, (Lines{"CbP (clutch bite point)", "CH (clutch / handbrake)",
                           "Bt (brake / throttle)", "AnA (analog axes)"}));
  EXPECT_EQ(name("ACPPicker"), "Analog paddle mode, CbP");
  focus("ACPPicker");
  press(Qt::Key_End);
  EXPECT_EQ(staged(), "ACP=4");
  EXPECT_EQ(text("ACPPicker"), "AnA (analog axes)");
  EXPECT_EQ(name("ACPPicker"), "Analog paddle mode, AnA, was CbP");
  save();
  EXPECT_EQ(valueOnBase(P::analogPaddles), 4);
}

TEST_F(Row, AChangedOneCanBeReverted) {
  open();
  EXPECT_FALSE(isVisible("FFRevert"));
  stage(P::forceFeedback, 80);
  EXPECT_TRUE(isVisible("FFRevert"));
  EXPECT_EQ(state("FFRevert"), "enabled: Back to 65 %");
  EXPECT_EQ(name("FFRevert"), "Force feedback strength, back to 65 %");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 80 %, was 65 %");
  click("FFRevert");
  EXPECT_EQ(staged(), "");
  EXPECT_FALSE(isVisible("FFRevert"));
  EXPECT_EQ(text("FFReadout"), "65 %");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 65 %");
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Row, TheHelpOfRevertSaysTheOldWord) {
  open();
  stage(P::brakeLevelIndicator, 60);
  stage(P::forceFeedbackScaling, 0);
  stage(P::analogPaddles, 2);
  EXPECT_EQ(state("BLIRevert"), "enabled: Back to OFF");
  EXPECT_EQ(state("FFSRevert"), "enabled: Back to PEA");
  EXPECT_EQ(state("ACPRevert"), "enabled: Back to CbP");
}

TEST_F(Row, TheFocusGoesToTheControlWhenRevertVanishes) {
  struct Case {
    P parameter;
    int value;
    std::string code;
    std::string next;
  };
  const std::vector<Case> cases{{P::forceFeedback, 80, "FF", "FFSlider"},
                                {P::sensitivity, 800, "SEN", "SENSlider"},
                                {P::forceFeedbackScaling, 0, "FFS", "FFSSegmentPEA"},
                                {P::analogPaddles, 2, "ACP", "ACPPicker"}};
  open();
  for (const auto& [parameter, value, code, next] : cases) {
    stage(parameter, value);
    focus(code + "Revert");
    press(Qt::Key_Space);
    EXPECT_EQ(staged(), "");
    EXPECT_EQ(focused(), next);
  }
}

TEST_F(Row, TheFocusGoesToTheSwitchWhereTheSliderIsOfNoUse) {
  openWith(P::sensitivity, 0);
  for (const auto& [parameter, value, code] : std::vector<std::tuple<P, int, std::string>>{
           {P::sensitivity, 900, "SEN"}, {P::brakeLevelIndicator, 60, "BLI"}}) {
    stage(parameter, value);
    focus(code + "Revert");
    press(Qt::Key_Space);
    EXPECT_EQ(focused(), code + "Toggle");
    stage(parameter, value);
    focus(code + "Slider");
    press(Qt::Key_Backspace);
    EXPECT_EQ(staged(), "");
    EXPECT_EQ(focused(), code + "Toggle");
  }
}

TEST_F(Row, TheSwitchHasTheFocusOfTheSliderWhileItIsOn) {
  open();
  focus("SENSlider");
  stage(P::sensitivity, 0);
  EXPECT_EQ(focused(), "SENToggle");
  press(Qt::Key_Space);
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(focused(), "SENSlider");
}

TEST_F(Row, BackspaceAndDeleteRevert) {
  open();
  for (const int key : {Qt::Key_Backspace, Qt::Key_Delete}) {
    stage(P::forceFeedback, 80);
    focus("FFSlider");
    press(key);
    EXPECT_EQ(staged(), "");
    EXPECT_EQ(focused(), "FFSlider");
    stage(P::sensitivity, 0);
    focus("SENToggle");
    press(key);
    EXPECT_EQ(staged(), "");
  }
}

TEST_F(Row, BackspaceOnAnUnchangedOneDoesNothing) {
  open();
  stage(P::forceFeedback, 80);
  focus("SHOSlider");
  press(Qt::Key_Backspace);
  EXPECT_EQ(staged(), "FF=80");
}

TEST_F(Row, BackspaceInAReadoutIsForTheText) {
  open();
  stage(P::forceFeedback, 80);
  focus("FFReadout");
  type("9");
  press(Qt::Key_Backspace);
  EXPECT_EQ(staged(), "FF=80");
  press(Qt::Key_Escape);
  EXPECT_EQ(text("FFReadout"), "80 %");
}

TEST_F(Row, SaysForAWhileThatTheBaseChangedIt) {
  open();
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(text("FFReadout"), "70 %");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 70 %, changed on the base");
  EXPECT_EQ(name("SHOSlider"), "Wheel vibration motor, 100 %");
  EXPECT_FALSE(hasTimer("SHORow"));
  const QImage noticed = find("FFRow").grab().toImage();
  endTimers("FFRow");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 70 %");
  EXPECT_NE(find("FFRow").grab().toImage(), noticed);
  EXPECT_FALSE(hasTimer("FFRow"));
}

TEST_F(Row, AStagedEditSurvivesAChangeAtTheWheel) {
  open();
  stage(P::forceFeedback, 80);
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(text("FFReadout"), "80 %");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 80 %, was 70 %, changed on the base");
  EXPECT_EQ(state("FFRevert"), "enabled: Back to 70 %");
  endTimers("FFRow");
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 80 %, was 70 %");
}

TEST_F(Row, AStagedEditThatTheBaseComesToMeetStaysStaged) {
  open();
  stage(P::forceFeedback, 80);
  base().turn(P::forceFeedback, 80);
  settle();
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_TRUE(isVisible("FFRevert"));
  EXPECT_EQ(text("unsavedCount"), "1 unsaved change");
}

TEST_F(Row, OtherTimersEndNoNotice) {
  open();
  base().turn(P::forceFeedback, 70);
  settle();
  QTimerEvent other(0);
  QApplication::sendEvent(&find("FFRow"), &other);
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 70 %, changed on the base");
}

TEST_F(Row, ASetSwitchedAtTheWheelIsNoChangeOfItsRows) {
  open();
  Bytes report;
  simulate([&](SimulatedBase& simulated) {
    simulated.menu().select(1);
    report = simulated.menu().report();
  });
  base().sendReport(report);
  settle();
  EXPECT_EQ(model().tuning()->slot(), 1);
  EXPECT_FALSE(hasTimer("FFRow"));
  EXPECT_EQ(name("FFSlider"), "Force feedback strength, 100 %");
}

TEST_F(Row, WhatWasAskedForIsNoChangeAtTheBase) {
  open();
  stage(P::forceFeedback, 80);
  save();
  model().selectSlot(1);
  settle();
  EXPECT_FALSE(hasTimer("FFRow"));
}

TEST_F(Row, DescribesItsRange) {
  open();
  EXPECT_EQ(description("FFSlider"), "0 to 100 %, step 1");
  EXPECT_EQ(description("FORReadout"), "0 to 120 %, step 10");
  EXPECT_EQ(description("SENSlider"), "90 to 2520 deg, step 10");
  EXPECT_EQ(description("BLISlider"), "Turn OFF off to set a number");
  whileReading([this] { EXPECT_EQ(description("FFSlider"), waitReason); });
}

TEST_F(Row, ColumnsDoNotMoveWhenAValueIsStaged) {
  open();
  const auto places = [this] {
    std::vector<QRect> rects;
    for (const char* const part : {"FFTitle", "FFSlider", "FFReadout"}) {
      rects.push_back(find(part).geometry());
    }
    rects.push_back(find("FFRow").geometry());
    return rects;
  };
  const auto before = places();
  stage(P::forceFeedback, 80);
  EXPECT_EQ(places(), before);
}

}  // namespace
}  // namespace quorvane
