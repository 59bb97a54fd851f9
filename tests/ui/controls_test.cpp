#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRadioButton>
#include <QWheelEvent>
#include <vector>

#include "ui/kit/pickers.h"
#include "ui/kit/readout.h"
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"

namespace quorvane {
namespace {

void press(QWidget& widget, int key, const QString& text = {}) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&widget, &down);
  QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
  QApplication::sendEvent(&widget, &up);
}

void mouse(QWidget& widget, QEvent::Type type, QPointF at, Qt::MouseButtons held) {
  QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
  QApplication::sendEvent(&widget, &event);
}

bool turnWheel(QWidget& widget, int turn) {
  const QPointF centre = QRectF(widget.rect()).center();
  QWheelEvent event(centre, widget.mapToGlobal(centre), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  event.ignore();
  QApplication::sendEvent(&widget, &event);
  return event.isAccepted();
}

// A control as an active window of its own.
template <typename Control>
class ControlTest : public testing::Test {
 protected:
  void show(Control& control) {
    control.resize(318, 36);
    static_cast<QWidget&>(control).show();
    control.activateWindow();
    QCoreApplication::processEvents();
  }

  std::vector<int> chosen_;
};

class ValueSliderTest : public ControlTest<ValueSlider> {
 protected:
  ValueSliderTest() {
    slider_.setScale(0, 120, 10);
    slider_.show(50, std::nullopt, Mark::none);
    QObject::connect(&slider_, &ValueSlider::chosen,
                     [this](int value) { chosen_.push_back(value); });
    ControlTest::show(slider_);
  }

  // The centre of the slider's handle at a value. The track has a margin of 9 pixels.
  QPointF at(int value) const { return {9 + 300.0 * value / 120, 18}; }

  ValueSlider slider_;
};

TEST_F(ValueSliderTest, MovesInItsStepByKeys) {
  struct Case {
    int key;
    int value;
  };
  const std::vector<Case> cases{{Qt::Key_Right, 60}, {Qt::Key_Left, 40},   {Qt::Key_Up, 60},
                                {Qt::Key_Down, 40},  {Qt::Key_PageUp, 60}, {Qt::Key_PageDown, 40},
                                {Qt::Key_Home, 0},   {Qt::Key_End, 120}};
  for (const Case& c : cases) {
    slider_.show(50, std::nullopt, Mark::none);
    chosen_.clear();
    press(slider_, c.key);
    EXPECT_EQ(chosen_, std::vector<int>{c.value}) << c.key;
    EXPECT_EQ(slider_.value(), c.value);
  }
}

TEST_F(ValueSliderTest, APageIsATenthOfTheRangeInSteps) {
  slider_.setScale(90, 2520, 10);
  EXPECT_EQ(slider_.pageStep(), 240);
  slider_.setScale(0, 100, 1);
  EXPECT_EQ(slider_.pageStep(), 10);
  slider_.setScale(0, 20, 1);
  EXPECT_EQ(slider_.pageStep(), 2);
  slider_.setScale(-5, 3, 1);
  EXPECT_EQ(slider_.pageStep(), 1);
}

TEST_F(ValueSliderTest, AtItsEndNothingIsChosen) {
  slider_.show(120, std::nullopt, Mark::none);
  press(slider_, Qt::Key_Right);
  EXPECT_TRUE(chosen_.empty());
}

TEST_F(ValueSliderTest, ADragIsChosenWhenItEnds) {
  std::vector<int> dragged;
  QObject::connect(&slider_, &ValueSlider::dragged, [&](int value) { dragged.push_back(value); });
  mouse(slider_, QEvent::MouseButtonPress, at(50), Qt::LeftButton);
  mouse(slider_, QEvent::MouseMove, at(73), Qt::LeftButton);
  mouse(slider_, QEvent::MouseMove, at(98), Qt::LeftButton);
  EXPECT_TRUE(chosen_.empty());
  EXPECT_EQ(dragged, (std::vector<int>{50, 70, 100}));
  mouse(slider_, QEvent::MouseButtonRelease, at(98), Qt::NoButton);
  EXPECT_EQ(chosen_, std::vector<int>{100});
}

TEST_F(ValueSliderTest, IsLeftAloneUnderTheFinger) {
  mouse(slider_, QEvent::MouseButtonPress, at(80), Qt::LeftButton);
  slider_.show(20, std::nullopt, Mark::none);
  EXPECT_EQ(slider_.value(), 80);
  mouse(slider_, QEvent::MouseButtonRelease, at(80), Qt::NoButton);
  slider_.show(20, std::nullopt, Mark::none);
  EXPECT_EQ(slider_.value(), 20);
}

TEST_F(ValueSliderTest, EveryPlaceGivesAStepOfTheScale) {
  for (int x = 0; x < slider_.width(); ++x) {
    mouse(slider_, QEvent::MouseButtonPress, {qreal(x), 18}, Qt::LeftButton);
    EXPECT_EQ(slider_.value() % 10, 0) << x;
    mouse(slider_, QEvent::MouseButtonRelease, {qreal(x), 18}, Qt::NoButton);
  }
  EXPECT_EQ(chosen_.front(), 0);
  EXPECT_EQ(chosen_.back(), 120);
}

TEST_F(ValueSliderTest, TheWheelDoesNothingWithoutTheFocus) {
  slider_.clearFocus();
  EXPECT_FALSE(turnWheel(slider_, 120));
  EXPECT_TRUE(chosen_.empty());
}

class ReadoutTest : public ControlTest<Readout> {
 protected:
  ReadoutTest() {
    readout_.setScale(0, 120, 10, QStringLiteral("%"));
    readout_.show(50, {}, Mark::none);
    QObject::connect(&readout_, &Readout::chosen, [this](int value) { chosen_.push_back(value); });
    ControlTest::show(readout_);
    edit_ = readout_.findChild<QLineEdit*>();
  }

  void type(const QString& text) {
    edit_->setFocus();
    edit_->selectAll();
    edit_->insert(text);
    edit_->setModified(true);
  }

  Readout readout_;
  QLineEdit* edit_ = nullptr;
};

TEST_F(ReadoutTest, ShowsTheValueWithItsUnit) {
  EXPECT_EQ(readout_.text(), QStringLiteral("50 %"));
  readout_.show(100, QStringLiteral("OFF"), Mark::changed);
  EXPECT_EQ(readout_.text(), QStringLiteral("OFF"));
  EXPECT_EQ(readout_.mark(), static_cast<int>(Mark::changed));
}

TEST_F(ReadoutTest, WhatIsTypedIsRoundedKeptInTheRangeAndChosenOnEnter) {
  struct Case {
    const char* typed;
    std::vector<int> chosen;
    int shown;
  };
  const std::vector<Case> cases{
      {"80", {80}, 80},   {"84", {80}, 80},
      {"86 %", {90}, 90}, {"999", {120}, 120},
      {"-7", {0}, 0},     {"  30 ", {30}, 30},
      {"50", {}, 50},     {"abc", {}, 50},
      {"", {}, 50},       {"9999999999999", {120}, 120},
  };
  for (const Case& c : cases) {
    readout_.show(50, {}, Mark::none);
    chosen_.clear();
    type(QString::fromLatin1(c.typed));
    press(readout_, Qt::Key_Return);
    EXPECT_EQ(chosen_, c.chosen) << c.typed;
    EXPECT_EQ(readout_.value(), c.shown) << c.typed;
  }
}

TEST_F(ReadoutTest, EscBringsTheValueBack) {
  type(QStringLiteral("80"));
  press(readout_, Qt::Key_Escape);
  EXPECT_EQ(readout_.text(), QStringLiteral("50 %"));
  press(readout_, Qt::Key_Return);
  EXPECT_TRUE(chosen_.empty());
}

TEST_F(ReadoutTest, StepsByItsStepAndNotFromAWord) {
  press(readout_, Qt::Key_Up);
  press(readout_, Qt::Key_Down);
  EXPECT_EQ(chosen_, (std::vector<int>{60, 50}));
  readout_.show(100, QStringLiteral("OFF"), Mark::none);
  press(readout_, Qt::Key_Up);
  EXPECT_EQ(chosen_.size(), 2U);
}

TEST(ToggleTest, TellsOfClicksAndNotOfWhatItIsToldToShow) {
  Toggle toggle(QStringLiteral("AUTO"));
  std::vector<bool> chosen;
  QObject::connect(&toggle, &Toggle::chosen, [&](bool on) { chosen.push_back(on); });
  toggle.show(true, Mark::none);
  EXPECT_TRUE(chosen.empty());
  toggle.click();
  toggle.click();
  EXPECT_EQ(chosen, (std::vector<bool>{false, true}));
}

const std::vector<Choice> scaling{{0, QStringLiteral("LIN, Linear")},
                                  {1, QStringLiteral("PEA, Peak")}};

TEST(SegmentsTest, OneIsChosenAtATime) {
  Segments segments(scaling);
  std::vector<int> chosen;
  QObject::connect(&segments, &Segments::chosen, [&](int value) { chosen.push_back(value); });
  segments.show(1, Mark::none);
  EXPECT_TRUE(segments.buttons()[1]->isChecked());
  segments.buttons()[0]->click();
  EXPECT_EQ(chosen, std::vector<int>{0});
  EXPECT_FALSE(segments.buttons()[1]->isChecked());
}

TEST(PickerTest, KeepsItsListWhileTheChoicesAreTheSame) {
  Picker picker;
  picker.setChoices(scaling);
  picker.show(1, Mark::none);
  EXPECT_EQ(picker.currentText(), QStringLiteral("PEA, Peak"));
  picker.setChoices(scaling);
  EXPECT_EQ(picker.currentIndex(), 1);
  picker.show(7, Mark::none);
  EXPECT_EQ(picker.currentIndex(), -1);
}

TEST(PickerTest, TheWheelDoesNothingWithoutTheFocus) {
  Picker picker;
  picker.setChoices(scaling);
  picker.show(0, Mark::none);
  EXPECT_FALSE(turnWheel(picker, -120));
  EXPECT_EQ(picker.currentIndex(), 0);
}

}  // namespace
}  // namespace quorvane
