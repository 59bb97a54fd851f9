#include <gtest/gtest.h>

#include <string>

#include "tests/ui/window_fixture.h"
#include "ui/kit/theme.h"

// The button "Find out why" of the window's frame, below Tuning's message.
namespace quorvane {
namespace {

constexpr const char* findOutWhy = "findOutWhyButton";

using FindOutWhy = WindowTest;

TEST_F(FindOutWhy, StandsBelowTheMessageWhileThereIsNoBase) {
  openWithoutBase();
  ASSERT_TRUE(isVisible(findOutWhy));
  const QWidget& button = find(findOutWhy);
  const QWidget& message = find("tuningMessage");
  const QPoint middle = message.mapTo(&window(), message.contentsRect().center());
  const QRect place(button.mapTo(&window(), QPoint()), button.size());
  EXPECT_NEAR(place.center().x(), middle.x(), 1);
  EXPECT_NEAR(place.top(), middle.y() + message.fontMetrics().height() / 2.0 + 16, 2);
  EXPECT_FALSE(find("tuningPage").isAncestorOf(&button));
  EXPECT_EQ(find("tuningPage").grab().toImage().pixelColor(5, 5), theme().surface);
}

TEST_F(FindOutWhy, FollowsTheSizeOfTheWindow) {
  openWithoutBase();
  window().resize(1600, 900);
  settle();
  const QWidget& button = find(findOutWhy);
  const QWidget& message = find("tuningMessage");
  EXPECT_NEAR(button.mapTo(&window(), button.rect().center()).x(),
              message.mapTo(&window(), message.rect().center()).x(), 1);
}

TEST_F(FindOutWhy, OpensBaseWithTheChecksDone) {
  openWithoutBase();
  click(findOutWhy);
  settle();
  EXPECT_EQ(window().section(), Section::base);
  EXPECT_TRUE(model().examination().has_value());
  EXPECT_TRUE(isVisible("checkAgainButton"));
  EXPECT_FALSE(isVisible(findOutWhy));
}

TEST_F(FindOutWhy, BelongsToTuningOnly) {
  openWithoutBase();
  for (const Section section : allSections) {
    visit(section);
    EXPECT_EQ(isVisible(findOutWhy), section == Section::tuning) << rawValue(section);
  }
}

TEST_F(FindOutWhy, GoesWithItsFocusWhenABaseComes) {
  openWithoutBase();
  focus(findOutWhy);
  base();
  settle();
  EXPECT_FALSE(isVisible(findOutWhy));
  EXPECT_TRUE(find("tuningPage").isAncestorOf(window().focusWidget()) ||
              window().focusWidget() == &find("tuningPage"))
      << focused();
}

}  // namespace
}  // namespace quorvane
