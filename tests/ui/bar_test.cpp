#include "ui/model/bar.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QVBoxLayout>
#include <string>

#include "tests/ui/window_fixture.h"
#include "ui/tuning/tuning_page.h"

namespace quorvane {
namespace {

class TestBar final : public Bar {
 public:
  TestBar(AppModel& model, const char* name) : Bar(model) {
    setObjectName(QString::fromLatin1(name));
    setFixedHeight(barHeight);
    auto* const button = new QPushButton;
    button->setObjectName(QString::fromLatin1(name) + QStringLiteral("Button"));
    (new QVBoxLayout(this))->addWidget(button);
  }

  bool isWanted() const override { return wanted_; }
  void want(bool wanted) {
    wanted_ = wanted;
    emit wantedChanged();
  }

  static constexpr int barHeight = 50;

 protected:
  void render() override {}

 private:
  bool wanted_ = false;
};

class Bars : public WindowTest {
 protected:
  void openWithTwo() {
    open();
    first_ = new TestBar(model(), "firstBar");
    second_ = new TestBar(model(), "secondBar");
    place().add(first_);
    place().add(second_);
    QObject::connect(&place(), &BarPlace::focusLeft, &window(), [this] { ++left_; });
  }

  BarPlace& place() { return find<TuningPage>("tuningPage").barsAbove(); }

  std::string shown() {
    return place().shown() == nullptr ? "none" : place().shown()->objectName().toStdString();
  }

  TestBar* first_ = nullptr;
  TestBar* second_ = nullptr;
  int left_ = 0;
};

TEST_F(Bars, OnlyTheMostImportantOneThatIsWantedIsShown) {
  openWithTwo();
  EXPECT_EQ(shown(), "none");
  EXPECT_EQ(place().height(), 0);
  second_->want(true);
  settle();
  EXPECT_EQ(shown(), "secondBar");
  EXPECT_TRUE(second_->isVisible());
  EXPECT_EQ(place().height(), TestBar::barHeight);
  first_->want(true);
  settle();
  EXPECT_EQ(shown(), "firstBar");
  EXPECT_TRUE(first_->isVisible());
  EXPECT_FALSE(second_->isVisible());
  EXPECT_EQ(place().height(), TestBar::barHeight);
  first_->want(false);
  EXPECT_EQ(shown(), "secondBar");
  second_->want(false);
  settle();
  EXPECT_EQ(shown(), "none");
  EXPECT_EQ(place().height(), 0);
}

TEST_F(Bars, StandAboveTheRowsAndBelowTheHeader) {
  openWithTwo();
  const int top = find("parameterList").y();
  first_->want(true);
  settle();
  EXPECT_EQ(place().y(), find("tuningHeader").geometry().bottom() + 1);
  EXPECT_EQ(find("parameterList").y(), top + TestBar::barHeight);
  EXPECT_EQ(place().width(), find("parameterList").width());
}

TEST_F(Bars, AreHiddenWhileThereIsNoMenu) {
  openWithTwo();
  first_->want(true);
  base().unplug();
  settle();
  EXPECT_FALSE(first_->isVisible());
}

TEST_F(Bars, TheWarningOfSetAIsTheOneAbove) {
  openWithTwo();
  first_->want(true);
  model().selectSlot(1);
  settle();
  EXPECT_TRUE(isVisible("warningBar"));
  EXPECT_FALSE(first_->isVisible());
  model().selectSlot(2);
  settle();
  EXPECT_FALSE(isVisible("warningBar"));
  EXPECT_TRUE(first_->isVisible());
}

TEST_F(Bars, ABarThatGoesGivesTheFocusBackToTheControlBefore) {
  openWithTwo();
  focus("NDPSlider");
  first_->want(true);
  settle();
  focus("firstBarButton");
  first_->want(false);
  EXPECT_EQ(left_, 1);
  EXPECT_EQ(focused(), "NDPSlider");
  first_->want(true);
  first_->want(false);
  EXPECT_EQ(left_, 1);
}

}  // namespace
}  // namespace quorvane
