#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QListView>
#include <QScrollBar>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/kit/theme.h"
#include "ui/log/log_model.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

class LogSection : public WindowTest {
 protected:
  void openLog() {
    open();
    visit(Section::log);
  }

  QListView& list() { return find<QListView>("logList"); }
  QScrollBar& bar() { return *list().verticalScrollBar(); }
  int rowCount() { return list().model()->rowCount(); }
  QModelIndex row(int number) { return list().model()->index(number, 0); }
  std::string shown(int number, int role = Qt::DisplayRole) {
    return row(number).data(role).toString().toStdString();
  }
  std::string time(int number) {
    return timeText(model().log().at(static_cast<std::size_t>(number)).time).toStdString();
  }

  // Adds this many lines to the log.
  void append(int count) {
    for (int i = 0; i < count; ++i) model().stagePreset(presetOf(std::to_string(i), {}));
    settle();
  }

  void choose(const std::vector<int>& numbers) {
    list().clearSelection();
    for (const int number : numbers) {
      list().selectionModel()->select(row(number), QItemSelectionModel::Select);
    }
  }

  static std::string copied() { return QApplication::clipboard()->text().toStdString(); }
};

TEST_F(LogSection, ListsTheLogInOrder) {
  openLog();
  model().selectSlot(4);
  settle();
  ASSERT_EQ(rowCount(), 2);
  EXPECT_EQ(shown(0), "Connected to CSL DD Wheel Base");
  EXPECT_EQ(shown(1), "Switched to set 4");
  EXPECT_EQ(shown(1, LogModel::timeRole), time(1));
}

TEST_F(LogSection, AnErrorIsTold) {
  openLog();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  model().refresh();
  settle();
  ASSERT_EQ(rowCount(), 2);
  EXPECT_TRUE(row(1).data(LogModel::isErrorRole).toBool());
  EXPECT_EQ(shown(1, Qt::AccessibleTextRole),
            time(1) + ", error, Read the tuning menu failed: " + menuTimeout);
  EXPECT_FALSE(row(0).data(LogModel::isErrorRole).toBool());
  EXPECT_EQ(shown(0, Qt::AccessibleTextRole), time(0) + ", Connected to CSL DD Wheel Base");
  const QImage image = list().viewport()->grab().toImage();
  EXPECT_EQ(image.pixelColor(2, list().visualRect(row(1)).center().y()), theme().errorGround);
  EXPECT_EQ(image.pixelColor(2, list().visualRect(row(0)).center().y()), theme().surface);
}

TEST_F(LogSection, LinesInALineAreShownInOne) {
  openLog();
  model().saveCurrentAsPreset("Wet\nSpa");
  settle();
  EXPECT_EQ(shown(1), "Saved preset \"Wet Spa\"");
}

TEST_F(LogSection, FollowsNewLinesWhileItsEndIsInView) {
  openLog();
  append(60);
  ASSERT_GT(bar().maximum(), 0);
  EXPECT_EQ(bar().value(), bar().maximum());
  append(1);
  EXPECT_EQ(bar().value(), bar().maximum());
}

TEST_F(LogSection, StaysWhereSomebodyReads) {
  openLog();
  append(60);
  bar().setValue(40);
  append(3);
  EXPECT_EQ(bar().value(), 40);
  bar().setValue(bar().maximum());
  append(1);
  EXPECT_EQ(bar().value(), bar().maximum());
}

TEST_F(LogSection, TheEndStaysInViewInOtherSizes) {
  openLog();
  append(60);
  for (const QSize size : {QSize(860, 560), QSize(1120, 740)}) {
    window().resize(size);
    settle();
    EXPECT_EQ(bar().value(), bar().maximum());
  }
}

TEST_F(LogSection, CopiesTheChosenLines) {
  openLog();
  append(3);
  focus("logList");
  choose({2, 0});
  press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(copied(), time(0) + "  Connected to CSL DD Wheel Base\n" + time(2) +
                          "  \"1\" matches the current values");
  choose({3});
  trigger("copyLog");
  EXPECT_EQ(copied(), time(3) + "  \"2\" matches the current values");
}

TEST_F(LogSection, ShowsErrorsOnlyOnDemand) {
  openLog();
  EXPECT_EQ(name("errorsOnlyToggle"), "Errors only");
  click("errorsOnlyToggle");
  EXPECT_EQ(rowCount(), 0);
  EXPECT_EQ(state("copyAllLogButton"), "disabled: There is no line to copy");
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  model().refresh();
  settle();
  ASSERT_EQ(rowCount(), 1);
  EXPECT_EQ(shown(0), std::string("Read the tuning menu failed: ") + menuTimeout);
  EXPECT_EQ(state("copyAllLogButton"), "enabled: Copy all lines that are shown");
  click("errorsOnlyToggle");
  EXPECT_EQ(rowCount(), 2);
}

TEST_F(LogSection, CopiesAllLinesThatAreShown) {
  openLog();
  append(1);
  click("copyAllLogButton");
  EXPECT_EQ(copied(), time(0) + "  Connected to CSL DD Wheel Base\n" + time(1) +
                          "  \"0\" matches the current values");
}

TEST_F(LogSection, IsCentredWhereThereIsMoreRoom) {
  openLog();
  const auto firstInk = [&] {
    const QImage image = list().viewport()->grab().toImage();
    const int y = list().visualRect(row(0)).center().y();
    int x = 4;
    while (x < image.width() && image.pixelColor(x, y) == theme().surface) ++x;
    return x;
  };
  const int usual = firstInk();
  window().resize(1920, 740);
  settle();
  EXPECT_EQ(firstInk(), usual + (list().viewport()->width() - 1280) / 2);
}

TEST_F(LogSection, NothingChosenCopiesNothing) {
  openLog();
  QApplication::clipboard()->setText(QStringLiteral("before"));
  list().clearSelection();
  focus("logList");
  press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(copied(), "before");
}

TEST_F(LogSection, AFullLogLosesItsBeginningAndKeepsWhatIsChosen) {
  openLog();
  append(static_cast<int>(AppModel::longestLog) - 1);
  ASSERT_EQ(rowCount(), static_cast<int>(AppModel::longestLog));
  choose({100});
  const std::string chosen = shown(100);
  append(7);
  EXPECT_EQ(rowCount(), static_cast<int>(AppModel::longestLog));
  const auto selected = list().selectionModel()->selectedIndexes();
  ASSERT_EQ(selected.size(), 1);
  EXPECT_EQ(selected.front().row(), 93);
  EXPECT_EQ(shown(93), chosen);
}

TEST_F(LogSection, ALogThatTurnedOverMeanwhileIsShownAnew) {
  openLog();
  visit(Section::base);
  append(static_cast<int>(AppModel::longestLog) + 5);
  visit(Section::log);
  ASSERT_EQ(rowCount(), static_cast<int>(AppModel::longestLog));
  EXPECT_EQ(shown(0), model().log().front().text);
  EXPECT_EQ(shown(rowCount() - 1), model().log().back().text);
}

TEST_F(LogSection, LongLinesWrap) {
  openLog();
  append(1);
  model().saveCurrentAsPreset(std::string(50, 'x') + " " + std::string(150, 'y') + " " +
                              std::string(150, 'z'));
  settle();
  EXPECT_GT(list().visualRect(row(2)).height(), list().visualRect(row(1)).height());
  EXPECT_LE(list().visualRect(row(2)).width(), list().viewport()->width());
}

TEST_F(LogSection, IsNamed) {
  openLog();
  EXPECT_EQ(name("logList"), "Log");
  EXPECT_EQ(textOf(find("pageTitle", find("logPage"))), "Log");
}

}  // namespace
}  // namespace quorvane
