#include "ui/shell/closing.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/kit/button.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class ClosingTest : public WindowTest {
 protected:
  void openCounting() {
    open();
    QObject::connect(&window().closing(), &Closing::ended, &window(), [this] { ++ended_; });
  }

  void openStaged() {
    openCounting();
    stage(P::forceFeedback, 80);
  }

  void close() {
    window().close();
    settleEvents();
  }

  void settleEvents() {
    for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  bool isOpen() { return window().isVisible(); }

  std::string question() { return textOf(find("dialogTitle", *dialog())); }
  std::string message() { return textOf(find("dialogMessage", *dialog())); }

  // Calls `begin`, which writes, and `look` before the first value is verified.
  void whileWriting(const std::function<void()>& begin, const std::function<void()>& look) {
    atPause(0, begin, look);
    settleEvents();
  }

  int ended_ = 0;
};

TEST_F(ClosingTest, NothingIsAskedWithoutUnsavedChanges) {
  open();
  close();
  EXPECT_FALSE(isOpen());
}

TEST_F(ClosingTest, UnsavedChangesAreAskedAbout) {
  openStaged();
  close();
  EXPECT_TRUE(isOpen());
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(question(), "1 change is not on the base");
  EXPECT_EQ(message(), "Save it to set C (Custom) before you quit? FF 80 would be lost.");
  EXPECT_EQ(dialog()->accessibleDescription().toStdString(), message());
  EXPECT_TRUE(find<Button>("closeSaveButton").isDefault());
  EXPECT_EQ(text("closeSaveButton"), "Save");
  EXPECT_EQ(find<Button>("closeDiscardButton").kind(), Button::Kind::destructive);
  EXPECT_EQ(focused(), "closeSaveButton");
}

TEST_F(ClosingTest, TheQuestionNamesEveryChange) {
  openStaged();
  stage(P::naturalDamper, 15);
  stage(P::sensitivity, 0);
  press(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(question(), "3 changes are not on the base");
  EXPECT_EQ(
      message(),
      "Save them to set C (Custom) before you quit? SEN AUTO, FF 80 and NDP 15 would be lost.");
}

TEST_F(ClosingTest, CancelAndEscKeepEverything) {
  openStaged();
  for (const bool byKey : {false, true}) {
    close();
    if (byKey) {
      press(Qt::Key_Escape);
    } else {
      click("closeCancelButton");
    }
    settle();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(staged(), "FF=80");
  }
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ClosingTest, DiscardClosesWithoutWriting) {
  openStaged();
  close();
  click("closeDiscardButton");
  settle();
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ClosingTest, SaveSavesAndThenCloses) {
  openStaged();
  close();
  press(Qt::Key_Return);
  settle();
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 1 change…", "[log] Saved 1 change to set C (Custom)"}));
}

TEST_F(ClosingTest, WhatTheBaseDidNotTakeKeepsTheWindowOpen) {
  openStaged();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  visit(Section::log);
  close();
  click("closeSaveButton");
  settle();
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(ended_, 0);
  EXPECT_EQ(window().section(), Section::tuning);
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_TRUE(text("statusLine").starts_with("Saved 0 of 1; the base rejected FF: "));
  close();
  EXPECT_EQ(question(), "1 change is not on the base");
}

TEST_F(ClosingTest, ASaveThatTheQuestionBeganIsShownUntilItEnds) {
  openStaged();
  close();
  whileWriting([this] { click("closeSaveButton"); },
               [this] {
                 EXPECT_TRUE(isOpen());
                 EXPECT_EQ(text("unsavedCount"), "Saving 0 of 1…");
               });
  EXPECT_FALSE(isOpen());
}

TEST_F(ClosingTest, ASaveIsFinishedFirstWithTheWindowHidden) {
  openStaged();
  whileWriting([this] { model().saveStaged(); },
               [this] {
                 close();
                 EXPECT_FALSE(isOpen());
                 EXPECT_EQ(dialog(), nullptr);
                 EXPECT_EQ(ended_, 0);
               });
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(ended_, 1);
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
}

TEST_F(ClosingTest, WhatAHiddenWindowCouldNotSaveIsAskedAbout) {
  openStaged();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  whileWriting([this] { model().saveStaged(); }, [this] { close(); });
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(ended_, 0);
  EXPECT_EQ(question(), "1 change is not on the base");
}

TEST_F(ClosingTest, AnApplyIsFinishedFirst) {
  openCounting();
  whileWriting([this] { model().apply(TuningPreset::builtIn()[2]); },
               [this] {
                 close();
                 EXPECT_EQ(ended_, 0);
               });
  EXPECT_EQ(ended_, 1);
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Applied \"Redline Lab 2025, Gran Turismo 7 (8 Nm)\" (11 values)"}));
}

TEST_F(ClosingTest, AHiddenWindowThatIsShownAgainStaysOpen) {
  openStaged();
  whileWriting([this] { model().saveStaged(); },
               [this] {
                 close();
                 window().show();
               });
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(ended_, 0);
  EXPECT_FALSE(find<QTimer>("closingTimeout").isActive());
}

TEST_F(ClosingTest, ChangesMadeDuringASaveAreAskedAboutAfterIt) {
  openStaged();
  whileWriting([this] { model().saveStaged(); },
               [this] {
                 stage(P::vibration, 50);
                 close();
               });
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(question(), "1 change is not on the base");
}

TEST_F(ClosingTest, ItIsNotWaitedForLongerThanTenSeconds) {
  openStaged();
  auto& timeout = find<QTimer>("closingTimeout");
  EXPECT_EQ(timeout.interval(), 10'000);
  whileWriting([this] { model().saveStaged(); },
               [&] {
                 close();
                 EXPECT_TRUE(timeout.isActive());
                 ASSERT_TRUE(QMetaObject::invokeMethod(&timeout, "timeout"));
                 settleEvents();
                 EXPECT_FALSE(isOpen());
                 EXPECT_EQ(ended_, 1);
               });
}

TEST_F(ClosingTest, ReadingIsNotWaitedFor) {
  open();
  whileReading([this] {
    close();
    EXPECT_FALSE(isOpen());
  });
}

TEST_F(ClosingTest, TheQuestionGoesWithTheBase) {
  openStaged();
  close();
  base().unplug();
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_TRUE(isOpen());
}

TEST_F(ClosingTest, TerminationAsksNothing) {
  openStaged();
  close();
  window().closing().terminate();
  EXPECT_EQ(ended_, 1);
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(ClosingTest, TerminationFinishesASave) {
  openStaged();
  stage(P::vibration, 50);
  whileWriting([this] { model().saveStaged(); },
               [this] {
                 window().closing().terminate();
                 settleEvents();
                 EXPECT_FALSE(isOpen());
                 EXPECT_EQ(ended_, 0);
               });
  EXPECT_EQ(ended_, 1);
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_EQ(valueOnBase(P::vibration), 50);
}

TEST_F(ClosingTest, TheEndOfTheSessionFinishesASave) {
  openStaged();
  model().saveStaged();
  EXPECT_TRUE(window().closing().sessionEnds(true));
  EXPECT_EQ(valueOnBase(P::forceFeedback), 80);
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(dialog(), nullptr);
}

TEST_F(ClosingTest, TheEndOfTheSessionAsksWhereItMay) {
  openStaged();
  EXPECT_TRUE(window().closing().sessionEnds(false));
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_FALSE(window().closing().sessionEnds(true));
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(question(), "1 change is not on the base");
}

}  // namespace
}  // namespace quorvane
