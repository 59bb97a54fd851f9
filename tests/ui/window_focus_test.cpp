#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/kit/focus_ring.h"

// Where the keyboard focus of the window begins, and the way that Tab takes through it.
namespace quorvane {
namespace {

class WindowFocus : public WindowTest {
 protected:
  void tab() { press(Qt::Key_Tab); }
  void backTab() { press(Qt::Key_Backtab, Qt::ShiftModifier); }

  bool isRinged() { return window().findChild<FocusRing*>()->isVisible(); }

  // Deletes a preset, so that the status bar offers to undo that.
  void deletePreset() {
    model().saveCurrentAsPreset("Spa");
    model().deletePreset(TuningPreset(model().userPresets().front()));
    settle();
  }
};

TEST_F(WindowFocus, BeginsOnTheFirstRowOfTuningWithoutARing) {
  open();
  click("statusLine");
  EXPECT_EQ(focused(), "SENSlider");
  EXPECT_FALSE(isRinged());
  press(Qt::Key_Shift);
  EXPECT_TRUE(isRinged());
}

TEST_F(WindowFocus, BeginsOnTheFirstRowOfABaseThatComesLater) {
  openWithoutBase();
  EXPECT_EQ(focused(), "findOutWhyButton");
  base();
  settle();
  EXPECT_EQ(focused(), "SENSlider");
}

TEST_F(WindowFocus, BeginsOnThePageThatIsShownFirst) {
  const ScopedVariable variable("QUORVANE_SECTION", "Tools");
  open();
  EXPECT_EQ(focused(), "rereadButton");
}

TEST_F(WindowFocus, AMenuThatComesLateTakesItFromNobody) {
  openWithoutBase();
  focus("sectionTuning");
  base();
  settle();
  EXPECT_EQ(focused(), "sectionTuning");
}

TEST_F(WindowFocus, BackFromTheFirstRowIsTheHeadersEnd) {
  open();
  backTab();
  EXPECT_EQ(focused(), "readAgainButton");
  backTab();
  EXPECT_EQ(focused(), "sourcesButton");
}

TEST_F(WindowFocus, AfterThePageComeTheStatusLinkTheSidebarAndTheLinks) {
  open();
  stage(TuningParameter::forceFeedback, 80);
  deletePreset();
  focus("saveButton");
  for (const char* const next : {"undoDeleteLink", "sectionTuning", "supportLink"}) {
    tab();
    EXPECT_EQ(focused(), next);
  }
  tab();
  EXPECT_TRUE(find("tuningHeader").isAncestorOf(QApplication::focusWidget())) << focused();
  for (const char* const before : {"supportLink", "sectionTuning", "undoDeleteLink"}) {
    backTab();
    EXPECT_EQ(focused(), before);
  }
}

TEST_F(WindowFocus, TheSidebarIsOneStopWhoseArrowsMoveAndChoose) {
  open();
  focus("sectionTuning");
  for (const auto& [key, section] :
       std::vector<std::pair<int, Section>>{{Qt::Key_Down, Section::presets},
                                            {Qt::Key_Down, Section::tools},
                                            {Qt::Key_Up, Section::presets},
                                            {Qt::Key_Up, Section::tuning}}) {
    press(key);
    EXPECT_EQ(window().section(), section);
    EXPECT_EQ(focused(), "section" + std::string(rawValue(section)));
  }
}

TEST_F(WindowFocus, TheLinksAreOneStop) {
  open();
  focus("sectionTuning");
  tab();
  EXPECT_EQ(focused(), "supportLink");
  for (const auto& [key, link] :
       std::vector<std::pair<int, std::string>>{{Qt::Key_Up, "supportLink"},
                                                {Qt::Key_Down, "websiteLink"},
                                                {Qt::Key_Down, "websiteLink"},
                                                {Qt::Key_Home, "supportLink"},
                                                {Qt::Key_End, "websiteLink"}}) {
    press(key);
    EXPECT_EQ(focused(), link);
  }
  backTab();
  EXPECT_EQ(focused(), "sectionTuning");
  tab();
  EXPECT_EQ(focused(), "websiteLink");
}

TEST_F(WindowFocus, KeysPutItIntoNoTextField) {
  open();
  model().saveCurrentAsPreset("Spa");
  visit(Section::presets);
  window()
      .findChild<QWidget*>(QStringLiteral("presetsPage"))
      ->findChildren<QLineEdit*>()
      .back()
      ->setFocus();
  press(Qt::Key_2, Qt::ControlModifier);
  press(Qt::Key_3, Qt::ControlModifier);
  settle();
  EXPECT_EQ(qobject_cast<QLineEdit*>(QApplication::focusWidget()), nullptr) << focused();
  EXPECT_TRUE(find("presetsPage").isAncestorOf(QApplication::focusWidget())) << focused();
}

TEST_F(WindowFocus, ADialogOfAMenuGivesItBack) {
  open();
  for (const char* const action : {"aboutAction", "shortcutsAction", "loadPresetAction"}) {
    focus("NDPSlider");
    trigger(action);
    ASSERT_NE(dialog(), nullptr) << action;
    press(Qt::Key_Escape);
    settle();
    window().activateWindow();
    settle();
    EXPECT_EQ(focused(), "NDPSlider") << action;
  }
}

}  // namespace
}  // namespace quorvane
