#include <gtest/gtest.h>

#include <QComboBox>
#include <string>

#include "tests/ui/window_fixture.h"

// The bar that says which values are not as the user left them.
namespace quorvane {
namespace {

using P = TuningParameter;

class NotAsLeftBars : public WindowTest {
 protected:
  void save(const std::vector<ParameterValue>& values) {
    for (const auto& [parameter, value] : values) stage(parameter, value);
    model().saveStaged();
    settle();
  }

  // Unplugs the base, and plugs it in with other values.
  void cyclePower(const std::vector<ParameterValue>& values) {
    base().unplug();
    settle();
    simulate([&](SimulatedBase& simulated) {
      for (const auto& [parameter, value] : values) simulated.menu().put(parameter, value);
    });
    base().plug();
    settle();
  }

  bool shows(const char* bar) { return exists(bar) && isVisible(bar); }
  bool hasBar() { return shows("notAsLeftBar"); }
};

TEST_F(NotAsLeftBars, TheBarNamesTheValues) {
  open();
  save({{P::forceFeedback, 80}, {P::naturalInertia, 9}});
  EXPECT_FALSE(hasBar());
  cyclePower({{P::forceFeedback, 100}, {P::naturalInertia, 5}});
  ASSERT_TRUE(hasBar());
  EXPECT_EQ(text("notAsLeftTitle"), "Two values are not as you left them");
  EXPECT_TRUE(text("notAsLeftNote").ends_with(": FF 80 → 100, NIN 9 → 5")) << text("notAsLeftNote");
  EXPECT_TRUE(text("notAsLeftNote").starts_with("today ") ||
              text("notAsLeftNote").starts_with("yesterday "));
}

TEST_F(NotAsLeftBars, FillingInStagesTheValuesAndWritesNothing) {
  open();
  save({{P::forceFeedback, 80}});
  cyclePower({{P::forceFeedback, 100}});
  takeTranscript();
  click("notAsLeftFillInButton");
  settle();
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_FALSE(hasBar());
}

TEST_F(NotAsLeftBars, CompareOpensWhatWasLeftBesideTheBase) {
  open();
  save({{P::forceFeedback, 80}});
  cyclePower({{P::forceFeedback, 100}});
  click("notAsLeftCompareButton");
  settle();
  ASSERT_TRUE(exists("compareView"));
  EXPECT_EQ(text("differingCount"), "1 differs,");
  EXPECT_TRUE(find<QComboBox>("rightSidePicker").currentText().startsWith("After "));
  click("fillInButton");
  settle();
  EXPECT_EQ(staged(), "FF=80");
}

TEST_F(NotAsLeftBars, WhatWasDismissedIsNotSaidAgainBeforeTheNextSave) {
  open();
  save({{P::forceFeedback, 80}});
  cyclePower({{P::forceFeedback, 100}});
  click("notAsLeftCloseButton");
  EXPECT_FALSE(hasBar());
  cyclePower({});
  EXPECT_FALSE(hasBar());
  save({{P::forceFeedback, 70}});
  cyclePower({{P::forceFeedback, 100}});
  EXPECT_TRUE(hasBar());
}

TEST_F(NotAsLeftBars, ItEndsWithAWriteWithAnotherSetAndWhenTheValuesAreBack) {
  open();
  save({{P::forceFeedback, 80}});
  cyclePower({{P::forceFeedback, 100}});
  base().turn(P::forceFeedback, 80);
  settle();
  EXPECT_FALSE(hasBar());
  base().turn(P::forceFeedback, 100);
  settle();
  EXPECT_FALSE(hasBar());
  save({{P::forceFeedback, 80}});
  cyclePower({{P::forceFeedback, 100}});
  EXPECT_TRUE(hasBar());
  model().selectSlot(3);
  settle();
  EXPECT_FALSE(hasBar());
  model().selectSlot(2);
  settle();
  EXPECT_FALSE(hasBar());
}

TEST_F(NotAsLeftBars, AnotherBaseHasNothingToSay) {
  open();
  save({{P::forceFeedback, 80}});
  base().unplug();
  settle();
  attach(0x0006);
  settle();
  EXPECT_FALSE(hasBar());
}

TEST_F(NotAsLeftBars, APowerCycleOfSetAIsTheLastLineOfItsWarning) {
  open();
  model().selectSlot(1);
  settle();
  const int warning = find("warningBar").height();
  save({{P::forceFeedback, 60}, {P::naturalInertia, 9}, {P::vibration, 50}});
  EXPECT_FALSE(shows("notAsLeftInSetABar"));
  cyclePower({{P::forceFeedback, 100}, {P::naturalInertia, 0}, {P::vibration, 100}});
  EXPECT_TRUE(isVisible("warningBar"));
  EXPECT_TRUE(shows("notAsLeftInSetABar"));
  EXPECT_FALSE(hasBar());
  EXPECT_EQ(text("notAsLeftInSetATitle"), "Three values are not as you left them");
  EXPECT_TRUE(text("notAsLeftInSetANote").ends_with("(set A does that when switched on)"));
  EXPECT_EQ(find("warningBar").height(), warning);
  click("notAsLeftInSetACloseButton");
  settle();
  EXPECT_TRUE(isVisible("warningBar"));
  EXPECT_FALSE(shows("notAsLeftInSetABar"));
}

// The bar is there with the first menu: the window never shows this menu without it.
TEST_F(NotAsLeftBars, IsThereWithTheFirstMenu) {
  open();
  model().selectSlot(1);
  settle();
  save({{P::forceFeedback, 60}});
  base().unplug();
  settle();
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::forceFeedback, 100); });
  bool seen = false;
  QObject::connect(&model(), &AppModel::changed, &window(), [&] {
    if (!model().isConnected() || !model().tuning()) return;
    seen = true;
    EXPECT_TRUE(model().notAsLeft());
  });
  base().plug();
  settle();
  EXPECT_TRUE(seen);
  EXPECT_TRUE(shows("notAsLeftInSetABar"));
}

}  // namespace
}  // namespace quorvane
