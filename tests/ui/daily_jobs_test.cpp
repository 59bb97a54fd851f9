#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <stdexcept>
#include <string>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"

// The jobs of every day, from a fresh start with Tuning shown, and the number of clicks or keys
// that each takes.
namespace quorvane {
namespace {

using P = TuningParameter;

class DailyJobs : public WindowTest {
 protected:
  void clicks(QWidget& widget) {
    click(widget);
    settle();
    ++count_;
  }

  void strikes(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    press(key, modifiers);
    settle();
    ++count_;
  }

  // The visible button with this accessible name. Throws std::runtime_error if there is none.
  QAbstractButton& button(const char* name) {
    for (auto* const button : window().findChildren<QAbstractButton*>()) {
      if (button->isVisible() && button->accessibleName() == QString::fromLatin1(name)) {
        return *button;
      }
    }
    throw std::runtime_error(std::string("there is no button \"") + name + "\"");
  }

  void tweakTwoAndSave() {
    clicks(find("FFSlider"));
    clicks(find("NDPSlider"));
    EXPECT_EQ(window().section(), Section::tuning);
    EXPECT_TRUE(model().staged().contains(P::forceFeedback));
    EXPECT_TRUE(model().staged().contains(P::naturalDamper));
    strikes(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(staged(), "");
  }

  void dropFile(const std::filesystem::path& file) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QString::fromStdString(file.string()))});
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &enter);
    QDropEvent drop({50, 50}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &drop);
    settle();
    ++count_;
  }

  int count_ = 0;
};

TEST_F(DailyJobs, LoadMineTweakTwoAndSaveIsFive) {
  open();
  model().saveCurrentAsPreset("Spa");
  settle();
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::vibration, 50); });
  model().refresh();
  settle();
  strikes(Qt::Key_L, Qt::ControlModifier);
  strikes(Qt::Key_Return);
  EXPECT_TRUE(model().staged().contains(P::vibration));
  tweakTwoAndSave();
  EXPECT_EQ(count_, 5);
}

TEST_F(DailyJobs, LoadABuiltInOneTweakTwoAndSaveIsFive) {
  open();
  model().saveCurrentAsPreset("Spa");
  settle();
  strikes(Qt::Key_3, Qt::ControlModifier);
  clicks(button("Load, Fanatec recommended, Gran Turismo 7"));
  EXPECT_NE(staged(), "");
  tweakTwoAndSave();
  EXPECT_EQ(count_, 5);
}

TEST_F(DailyJobs, AFriendsFileDroppedLookedAtAndLoadedIsTwo) {
  open();
  const auto file = directory_ / "friend.json";
  putFile(file, encodePresets({presetOf("Friend", {{P::forceFeedback, 80}})}));
  dropFile(file);
  EXPECT_EQ(window().section(), Section::presets);
  clicks(button("Load, Friend"));
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(count_, 2);
}

TEST_F(DailyJobs, KeepingWhatTheBaseHasNowIsOneAndTheName) {
  open();
  strikes(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(count_, 1);
  type("Wet");
  press(Qt::Key_Return);
  settle();
  ASSERT_EQ(model().userPresets().size(), 1U);
  EXPECT_EQ(model().userPresets().front().name, "Wet");
}

TEST_F(DailyJobs, WhyThereIsNoBaseIsOne) {
  openWithoutBase();
  clicks(find("findOutWhyButton"));
  EXPECT_TRUE(isVisible("checkList"));
  EXPECT_EQ(count_, 1);
}

TEST_F(DailyJobs, WhyThereIsNoBaseIsOneKeyToo) {
  openWithoutBase();
  strikes(Qt::Key_Space);
  EXPECT_TRUE(isVisible("checkList"));
  EXPECT_EQ(count_, 1);
}

TEST_F(DailyJobs, ForceFeedbackIsReachedAndChangedByTabAndDown) {
  open();
  strikes(Qt::Key_Tab);
  EXPECT_EQ(focused(), "FFSlider");
  strikes(Qt::Key_Down);
  EXPECT_EQ(staged(), "FF=64");
  EXPECT_EQ(count_, 2);
}

TEST_F(DailyJobs, UndoingASaveIsOneKeyOrClick) {
  open();
  tweakTwoAndSave();
  const std::int64_t saved = valueOnBase(P::forceFeedback);
  count_ = 0;
  strikes(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(valueOnBase(P::forceFeedback), saved);
  EXPECT_EQ(count_, 1);
  clicks(find("savedUndoButton"));  // which redoes it now
  EXPECT_EQ(valueOnBase(P::forceFeedback), saved);
  clicks(find("savedUndoButton"));
  EXPECT_NE(valueOnBase(P::forceFeedback), saved);
  EXPECT_EQ(count_, 3);
}

}  // namespace
}  // namespace quorvane
