#include "ui/history/history_window.h"

#include <gtest/gtest.h>

#include <QListView>
#include <fstream>
#include <string>
#include <vector>

#include "history/history_coding.h"
#include "tests/history/history_samples.h"
#include "tests/ui/window_fixture.h"
#include "ui/history/history_list_model.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using std::filesystem::path;

class HistoryOfWrites : public WindowTest {
 protected:
  void save(P parameter, std::int64_t value) {
    model().stage(parameter, value);
    model().saveStaged();
    settle();
  }

  // Opens the history by its keys, and waits until it is read.
  void openHistory() {
    press(Qt::Key_H, Qt::ControlModifier);
    waitUntil([&] { return text("historyMessage") != "Reading…"; });
    settle();
  }

  QListView& list() { return find<QListView>("historyList"); }

  // The rows' titles, from the top.
  Lines rows() {
    const QAbstractItemModel& model = *list().model();
    Lines titles;
    for (int row = 0; row < model.rowCount(); ++row) {
      titles.push_back(model.index(row, 0).data().toString().toStdString());
    }
    return titles;
  }

  void choose(int row) { list().setCurrentIndex(list().model()->index(row, 0)); }

  path file() { return history_.fileOf(info(0)).value(); }

  void append(const std::string& content) {
    std::filesystem::create_directories(file().parent_path());
    std::ofstream(file(), std::ios::app | std::ios::binary) << content;
  }

  // Appends as many records without an outcome.
  void appendRecords(int count) {
    std::string lines;
    for (int number = 0; number < count; ++number) {
      HistoryRecord record = sampleRecord(65, 80);
      record.time = WallSeconds(std::chrono::seconds(1'700'000'000 + number));
      lines += recordLine(record);
    }
    append(lines);
  }
};

TEST_F(HistoryOfWrites, ListsTheNewestFirstUnderItsDay) {
  open();
  save(P::forceFeedback, 80);
  model().selectSlot(3);
  settle();
  openHistory();
  EXPECT_EQ(text("historySubtitle"), "What was written to CSL DD Wheel Base");
  EXPECT_EQ(rows(), (Lines{"Today", "Switched to set 3", "1 value to set C (Custom)"}));
  EXPECT_EQ(focused(), "historyList");
  EXPECT_EQ(list().currentIndex().row(), 1);
}

TEST_F(HistoryOfWrites, SaysWhatWasNotTaken) {
  open();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::brakeForce}; });
  save(P::brakeForce, 70);
  model().discardStaged();
  openHistory();
  const QString spoken = list().currentIndex().data(Qt::AccessibleTextRole).toString();
  EXPECT_TRUE(
      spoken.endsWith(QStringLiteral("0 of 1 value to set C (Custom), brF not taken, this window")))
      << spoken.toStdString();
}

TEST_F(HistoryOfWrites, FillingInStagesTheMenuBeforeAndWritesNothing) {
  open();
  save(P::forceFeedback, 80);
  save(P::vibration, 50);
  openHistory();
  press(Qt::Key_Down);
  EXPECT_TRUE(text("historyChoice").starts_with("Back to before "));
  takeTranscript();
  takeLog();
  press(Qt::Key_Return, Qt::ControlModifier);
  settle();
  EXPECT_FALSE(exists("historyWindow"));
  EXPECT_EQ(staged(), "FF=65 SHO=100");
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(window().section(), Section::tuning);
  ASSERT_EQ(takeLog().size(), 1U);
}

TEST_F(HistoryOfWrites, FillingInIsOfferedOnlyWhenItWouldChangeSomething) {
  open();
  save(P::forceFeedback, 80);
  save(P::forceFeedback, 65);
  openHistory();
  EXPECT_EQ(state("fillHistoryButton"), "enabled: Fill these values in as unsaved changes");
  choose(2);
  EXPECT_EQ(state("fillHistoryButton"), "disabled: The base has these values already");
  choose(1);
  model().stage(P::forceFeedback, 80);
  settle();
  EXPECT_EQ(state("fillHistoryButton"), "disabled: These values are filled in already");
}

TEST_F(HistoryOfWrites, StaysWhenTheBaseLeaves) {
  open();
  save(P::forceFeedback, 80);
  openHistory();
  base().unplug();
  settle();
  EXPECT_EQ(rows().size(), 2U);
  EXPECT_EQ(state("fillHistoryButton"), std::string("disabled: ") + connectReason);
}

TEST_F(HistoryOfWrites, ANewRecordAppears) {
  open();
  openHistory();
  EXPECT_TRUE(text("historyMessage").starts_with("Nothing was written to this base yet"));
  save(P::forceFeedback, 80);
  waitUntil([&] { return rows().size() == 2; });
  EXPECT_EQ(rows().back(), "1 value to set C (Custom)");
  EXPECT_TRUE(isVisible("historyList"));
  const QString chosen = list().currentIndex().data().toString();
  save(P::vibration, 50);
  waitUntil([&] { return rows().size() == 3; });
  EXPECT_EQ(list().currentIndex().row(), 2);
  EXPECT_EQ(list().currentIndex().data().toString(), chosen);
}

TEST_F(HistoryOfWrites, WithoutABaseSaysWhatToDo) {
  openWithoutBase();
  openHistory();
  EXPECT_EQ(text("historyMessage"), "Connect a base to see what was written to it");
  EXPECT_EQ(state("fillHistoryButton"), std::string("disabled: ") + connectReason);
  base();
  settle();
  waitUntil([&] { return text("historyMessage").starts_with("Nothing was written"); });
}

TEST_F(HistoryOfWrites, ATornLineIsLeftOutAndSaid) {
  open();
  save(P::forceFeedback, 80);
  append("{\"id\":");
  openHistory();
  EXPECT_EQ(rows().size(), 2U);
  EXPECT_EQ(text("historyNotice"), "Left out: 1 line that cannot be read");
}

TEST_F(HistoryOfWrites, AFileThatCannotBeReadIsSaid) {
  open();
  std::filesystem::create_directories(file());
  openHistory();
  EXPECT_TRUE(text("historyMessage").starts_with("The history cannot be read: "))
      << text("historyMessage");
  EXPECT_FALSE(isVisible("historyNotice"));
}

TEST_F(HistoryOfWrites, OnlyThisSetHidesTheOthers) {
  open();
  save(P::forceFeedback, 80);
  model().selectSlot(3);
  settle();
  openHistory();
  click("onlyThisSetBox");
  settle();
  EXPECT_TRUE(text("historyMessage").starts_with("Nothing was written to this set yet"));
  EXPECT_TRUE(isVisible("historyMessage"));
  model().selectSlot(2);
  settle();
  waitUntil([&] { return rows().size() == 3; });
  click("onlyThisSetBox");
  waitUntil([&] { return rows().size() == 4; });
}

TEST_F(HistoryOfWrites, ALongHistoryOpensInPieces) {
  open();
  appendRecords(2000);
  openHistory();
  const auto& model = static_cast<const HistoryListModel&>(*list().model());
  EXPECT_GT(model.rowCount(), 2000);
  press(Qt::Key_End);
  settle();
  ASSERT_NE(model.record(list().currentIndex()), nullptr);
  EXPECT_EQ(list().currentIndex().row(), model.rowCount() - 1);
}

TEST_F(HistoryOfWrites, TheKeysSkipCaptionsAndEscCloses) {
  open();
  appendRecords(1);
  save(P::forceFeedback, 80);
  openHistory();
  ASSERT_EQ(rows().size(), 4U);
  press(Qt::Key_Down);
  EXPECT_EQ(list().currentIndex().row(), 3);
  press(Qt::Key_Escape);
  settle();
  EXPECT_FALSE(exists("historyWindow"));
}

TEST_F(HistoryOfWrites, ReturnComparesWithTheBase) {
  open();
  save(P::forceFeedback, 80);
  openHistory();
  EXPECT_EQ(state("compareHistoryButton"), "enabled: Compare these values with those on the base");
  press(Qt::Key_Return);
  settle();
  EXPECT_TRUE(isVisible("compareWindow"));
  EXPECT_EQ(window().findChildren<HistoryWindow*>().size(), 1);
}

TEST_F(HistoryOfWrites, IsOpenOnce) {
  open();
  openHistory();
  trigger("historyAction");
  EXPECT_EQ(window().findChildren<HistoryWindow*>().size(), 1);
  click("closeHistoryButton");
  settle();
  EXPECT_FALSE(exists("historyWindow"));
}

}  // namespace
}  // namespace quorvane
