#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEnterEvent>
#include <QTimerEvent>
#include <string>
#include <utility>
#include <vector>

#include "protocol/setting_help.h"
#include "tests/ui/window_fixture.h"

// "What it does": the panel beside the list of Tuning in wide windows, and the popup.
namespace quorvane {
namespace {

using P = TuningParameter;

class SettingHelpUi : public WindowTest {
 protected:
  static constexpr int wide = 1500;

  void openWide(int width = wide, int height = 1080) {
    open();
    window().resize(width, height);
    settle();
  }

  bool showsPanel() {
    const auto panels = find("tuningPage").findChildren<QWidget*>(QStringLiteral("settingHelp"));
    return !panels.empty() && panels.front()->isVisible();
  }

  // The code of the setting that the panel explains.
  std::string explained() { return text("helpCode"); }

  void point(const std::string& row, QEvent::Type type) {
    if (type == QEvent::Enter) {
      QEnterEvent enter({5, 5}, {5, 5}, {5, 5});
      QApplication::sendEvent(&find(row), &enter);
    } else {
      QEvent leave(type);
      QApplication::sendEvent(&find(row), &leave);
    }
    settle();
  }

  // Makes the page's timers fire now; returns their number.
  int endTimers() {
    QWidget& page = find("tuningPage");
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(&page);
    for (const auto& timer : timers) {
      QTimerEvent event(timer.timerId);
      QApplication::sendEvent(&page, &event);
    }
    settle();
    return static_cast<int>(timers.size());
  }
};

TEST_F(SettingHelpUi, ThePanelStandsBesideTheListInWideWindowsOnly) {
  openWide(wide - 1);
  EXPECT_FALSE(showsPanel());
  window().resize(wide, 740);
  settle();
  EXPECT_TRUE(showsPanel());
  const QWidget& panel = find("settingHelp");
  EXPECT_GE(panel.width(), 460);
  EXPECT_EQ(panel.mapTo(&window(), panel.rect().topRight()).x(), wide - 1);
}

TEST_F(SettingHelpUi, TheEmptyPageHasNoPanel) {
  openWithoutBase();
  window().resize(1920, 1080);
  settle();
  EXPECT_FALSE(showsPanel());
  base();
  settle();
  EXPECT_TRUE(showsPanel());
}

TEST_F(SettingHelpUi, ViewHidesThePanel) {
  openWide();
  trigger("whatItDoesAction");
  settle();
  EXPECT_FALSE(showsPanel());
  trigger("whatItDoesAction");
  settle();
  EXPECT_TRUE(showsPanel());
}

TEST_F(SettingHelpUi, ThePanelTellsAllAboutASetting) {
  openWide();
  focus("FFSlider");
  settle();
  const SettingHelp& help = helpOf(P::forceFeedback);
  EXPECT_EQ(explained(), "FF");
  EXPECT_EQ(text("helpTitle"), "Force feedback strength");
  EXPECT_EQ(text("helpWhat"), help.what);
  EXPECT_EQ(text("helpFeel"), help.feel);
  EXPECT_EQ(text("helpOnBase"), "65 %");
  EXPECT_EQ(text("helpRange"), "0 to 100 %, step 1");
  EXPECT_EQ(text("helpFactory"), "100 %");
  EXPECT_EQ(text("helpWorksWith"), help.worksWith);
  EXPECT_TRUE(name("helpBuiltIn").starts_with("Fanatec factory defaults: 100 %, "));
  EXPECT_FALSE(isVisible("helpMine"));
}

TEST_F(SettingHelpUi, ThePanelShowsOnesOwnPresetsLive) {
  openWide();
  focus("FFSlider");
  model().saveCurrentAsPreset("Wet");
  settle();
  EXPECT_TRUE(isVisible("helpMine"));
  EXPECT_EQ(name("helpMine"), "Wet: 65 %");
  focus("FULSlider");
  settle();
  EXPECT_TRUE(name("helpBuiltIn").starts_with("Fanatec factory defaults: left alone, "));
}

TEST_F(SettingHelpUi, RangesNameTheWordsThatFitToo) {
  openWide();
  for (const auto& [control, range] : std::vector<std::pair<std::string, std::string>>{
           {"SENSlider", "90 to 2520 deg, step 10, or AUTO"},
           {"BLIToggle", "0 to 100 %, step 1, or OFF"},
           {"FFSSegmentPEA", "LIN, PEA"},
           {"ACPPicker", "CbP, CH, Bt, AnA"}}) {
    focus(control);
    settle();
    EXPECT_EQ(text("helpRange"), range);
  }
}

TEST_F(SettingHelpUi, ThePanelFollowsTheFocusAndStaysWhenItLeavesTheList) {
  openWide();
  EXPECT_EQ(explained(), "SEN");
  focus("NDPReadout");
  EXPECT_EQ(explained(), "NDP");
  focus("sourcesButton");
  EXPECT_EQ(explained(), "NDP");
}

TEST_F(SettingHelpUi, WithoutAFocusedRowThePanelFollowsThePointerAfterAMoment) {
  openWide();
  focus("sectionTuning");
  point("DPRRow", QEvent::Enter);
  EXPECT_EQ(explained(), "SEN");
  EXPECT_EQ(endTimers(), 1);
  EXPECT_EQ(explained(), "DPR");
  point("SPRRow", QEvent::Enter);
  point("SPRRow", QEvent::Leave);
  EXPECT_EQ(endTimers(), 0);
  EXPECT_EQ(explained(), "DPR");
  focus("FFSlider");
  point("SPRRow", QEvent::Enter);
  endTimers();
  EXPECT_EQ(explained(), "FF");
}

TEST_F(SettingHelpUi, RowsAreTallerWhereAllFit) {
  openWide(1920, 1080);
  EXPECT_EQ(find("FFRow").height(), 48);
  window().resize(1920, 740);
  settle();
  EXPECT_EQ(find("FFRow").height(), 36);
  window().resize(1120, 1080);
  settle();
  EXPECT_EQ(find("FFRow").height(), 36);
}

TEST_F(SettingHelpUi, KeysOnARowOpenThePopup) {
  open();
  for (const char* const control : {"NDPSlider", "NDPReadout"}) {
    for (const auto modifiers :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier)}) {
      focus(control);
      press(Qt::Key_F1, modifiers);
      settle();
      ASSERT_NE(dialog(), nullptr) << control;
      EXPECT_EQ(dialog()->objectName(), QStringLiteral("settingHelpPopup"));
      EXPECT_EQ(textOf(find("helpCode", *dialog())), "NDP");
      EXPECT_EQ(textOf(find("helpWhat", *dialog())), helpOf(P::naturalDamper).what);
      press(Qt::Key_Escape);
      EXPECT_EQ(dialog(), nullptr);
      window().activateWindow();  // as a desktop does after a dialog
      settle();
      EXPECT_EQ(focused(), control);
    }
  }
  focus("ACPPicker");
  press(Qt::Key_F1);
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(textOf(find("helpCode", *dialog())), "ACP");
}

TEST_F(SettingHelpUi, AButtonInTheRowOpensThePopup) {
  open();
  EXPECT_FALSE(isVisible("FFHelp"));
  focus("FFSlider");
  ASSERT_TRUE(isVisible("FFHelp"));
  EXPECT_FALSE(isVisible("SENHelp"));
  EXPECT_EQ(name("FFHelp"), "Force feedback strength, what it does");
  click("FFHelp");
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(textOf(find("helpCode", *dialog())), "FF");
}

TEST_F(SettingHelpUi, ChangedRowsAndRowsBesideThePanelHaveNoButton) {
  open();
  focus("FFSlider");
  stage(P::forceFeedback, 80);
  EXPECT_FALSE(isVisible("FFHelp"));
  EXPECT_TRUE(isVisible("FFRevert"));
  focus("NDPSlider");
  EXPECT_TRUE(isVisible("NDPHelp"));
  window().resize(wide, 740);
  settle();
  EXPECT_FALSE(isVisible("NDPHelp"));
}

}  // namespace
}  // namespace quorvane
