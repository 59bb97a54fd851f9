#include <gtest/gtest.h>

#include <QScrollArea>
#include <string>
#include <vector>

#include "tests/ui/window_fixture.h"

// The keys of a row of the tuning list, which is one Tab stop.
namespace quorvane {
namespace {

using P = TuningParameter;

class RowKeys : public WindowTest {
 protected:
  void openWith(TuningParameter parameter, std::int64_t value) {
    simulate([=](SimulatedBase& simulated) { simulated.menu().put(parameter, value); });
    open();
  }
};

TEST_F(RowKeys, EachRowIsOneTabStop) {
  open();
  stage(P::forceFeedback, 80);
  focus("SENSlider");
  const Lines stops{"FFSlider",  "SHOSlider", "BLIToggle", "FFSSegmentPEA", "FORSlider",
                    "SPRSlider", "DPRSlider", "NDPSlider", "NFRSlider",     "brFSlider",
                    "FEISlider", "ACPPicker", "INTSlider", "NINSlider",     "FULSlider"};
  for (const std::string& stop : stops) {
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), stop);
  }
}

TEST_F(RowKeys, TheStopOfARowIsItsSwitchWhileThatIsOn) {
  openWith(P::brakeLevelIndicator, 60);
  focus("SHOSlider");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), "BLISlider");
  press(Qt::Key_Space);
  EXPECT_EQ(staged(), "BLI=101");
  EXPECT_EQ(focused(), "BLIToggle");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), "FFSSegmentPEA");
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(focused(), "BLIToggle");
  press(Qt::Key_Space);
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(focused(), "BLISlider");
}

TEST_F(RowKeys, DigitsBeginToType) {
  struct Case {
    const char* control;
    const char* typed;
    std::string expected;
  };
  const std::vector<Case> cases{{"FFSlider", "80", "FF=80"},
                                {"SENSlider", "540", "SEN=540"},
                                {"INTSlider", "7", "INT=7"},
                                {"BLIToggle", "60", "BLI=60"}};
  open();
  for (const auto& [control, typed, expected] : cases) {
    focus(control);
    type(typed);
    EXPECT_EQ(staged(), "") << typed;
    press(Qt::Key_Return);
    EXPECT_EQ(staged(), expected);
    const std::string code = std::string(control).substr(0, expected.find('='));
    EXPECT_EQ(focused(), code + "Slider");
    model().discardStaged();
    settle();
  }
}

TEST_F(RowKeys, AMinusBeginsToTypeWhereTheRangeGoesBelowZero) {
  attach(0x0E03);
  open();
  focus("DRISlider");
  type("-3");
  EXPECT_EQ(focused(), "DRIReadout");
  press(Qt::Key_Return);
  EXPECT_EQ(staged(), "DRI=-3");
  focus("FFSlider");
  type("-");
  EXPECT_EQ(focused(), "FFSlider");
}

TEST_F(RowKeys, ReturnAndF2TypeOverTheValue) {
  open();
  for (const int key : {Qt::Key_Return, Qt::Key_F2}) {
    focus("FFSlider");
    press(key);
    EXPECT_EQ(focused(), "FFReadout");
    type("70");
    press(Qt::Key_Return);
    EXPECT_EQ(staged(), "FF=70");
    EXPECT_EQ(focused(), "FFSlider");
    model().discardStaged();
    settle();
  }
}

TEST_F(RowKeys, EscLeavesTheReadoutWithTheValueAsItWas) {
  open();
  focus("FFSlider");
  type("8");
  EXPECT_EQ(focused(), "FFReadout");
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "FFSlider");
  EXPECT_EQ(text("FFReadout"), "65 %");
  EXPECT_EQ(staged(), "");
  press(Qt::Key_F2);
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "FFSlider");
}

TEST_F(RowKeys, TabOutOfTheReadoutGoesToTheNextRow) {
  open();
  focus("FFSlider");
  type("80");
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), "SHOSlider");
  EXPECT_EQ(staged(), "FF=80");
}

TEST_F(RowKeys, SpacePressesTheSwitchOfTheRow) {
  open();
  focus("SENSlider");
  press(Qt::Key_Space);
  EXPECT_EQ(staged(), "SEN=0");
  EXPECT_EQ(focused(), "SENToggle");
  press(Qt::Key_Backspace);
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(focused(), "SENSlider");
  focus("FFSlider");
  press(Qt::Key_Space);
  EXPECT_EQ(staged(), "");
}

TEST_F(RowKeys, CtrlUpAndDownGoFromRowToRow) {
  open();
  focus("SENSlider");
  press(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(focused(), "SENSlider");
  for (const char* const next :
       {"FFSlider", "SHOSlider", "BLIToggle", "FFSSegmentPEA", "FORSlider"}) {
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(focused(), next);
  }
  press(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(focused(), "FFSSegmentPEA");
  focus("ACPPicker");
  press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(focused(), "INTSlider");
  press(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(focused(), "ACPPicker");
  EXPECT_EQ(staged(), "");
}

TEST_F(RowKeys, TheRowThatCtrlDownGoesToIsInView) {
  open();
  window().resize(860, 560);
  settle();
  focus("SENSlider");
  for (int row = 0; row < 20; ++row) press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(focused(), "FULSlider");
  const QWidget& last = find("FULRow");
  const QWidget* const port = find<QScrollArea>("parameterList").viewport();
  EXPECT_TRUE(port->rect().contains(QRect(last.mapTo(port, QPoint()), last.size())));
}

TEST_F(RowKeys, ADisabledControlLeavesTheFocusToItsRow) {
  open();
  for (const char* const control : {"FFSlider", "FFReadout", "ACPPicker", "FFSSegmentPEA"}) {
    focus(control);
    const std::string row = find(control).parentWidget()->objectName().toStdString();
    whileReading([&] {
      EXPECT_EQ(focused(), row == "FFSSegments" ? "FFSRow" : row) << control;
      press(Qt::Key_Space);
      press(Qt::Key_8);
    });
    EXPECT_EQ(focused(), control);
    EXPECT_EQ(staged(), "");
  }
}

TEST_F(RowKeys, ABaseThatComesBackFindsTheFocusWhereItWas) {
  open();
  focus("FFSlider");
  base().unplug();
  settle();
  base().plug();
  settle();
  EXPECT_EQ(focused(), "FFSlider");
}

TEST_F(RowKeys, WhatTakesNoTabCanStillBeClicked) {
  open();
  click("SENToggle");
  EXPECT_EQ(staged(), "SEN=0");
  click("SENRevert");
  EXPECT_EQ(staged(), "");
  click("FFReadout");
  EXPECT_EQ(focused(), "FFReadout");
}

}  // namespace
}  // namespace quorvane
