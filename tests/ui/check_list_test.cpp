#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <memory>
#include <string>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/base/check_row.h"
#include "ui/base/check_text.h"

namespace quorvane {
namespace {

constexpr const char* whyButton = "whyNotFoundButton";

class CheckListTest : public WindowTest {
 protected:
  void openBase() {
    openWithoutBase();
    visit(Section::base);
  }

  void examine() {
    click(whyButton);
    settle();
  }

  const std::vector<DoctorCheck>& checks() {
    return model().examination().value().diagnosis.checks;
  }

  // The visible text of each row: "TITLE | Outcome | finding | next step".
  Lines rows() {
    Lines lines;
    for (const CheckRow* const row : find("checkList").findChildren<CheckRow*>()) {
      std::string line;
      for (const char* const part :
           {"checkTitle", "checkOutcome", "checkFinding", "checkNextStep"}) {
        const auto& label = find<QLabel>(part, *row);
        if (label.isVisible()) line += (line.empty() ? "" : " | ") + textOf(label);
      }
      lines.push_back(line);
    }
    return lines;
  }

  Lines expectedRows() {
    Lines lines;
    for (const DoctorCheck& check : checks()) {
      std::string line = check.title + " | " + outcomeWord(check.outcome) + " | " + check.finding;
      if (check.outcome == CheckOutcome::failed) line += " | Next step: " + check.nextStep;
      lines.push_back(line);
    }
    return lines;
  }
};

TEST_F(CheckListTest, IsOfferedWhileThereIsTrouble) {
  openBase();
  EXPECT_TRUE(isVisible(whyButton));
  EXPECT_EQ(text(whyButton), "Why is my base not found?");
  base();
  settle();
  EXPECT_FALSE(isVisible(whyButton));
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  click("baseReadAgainButton");
  settle();
  EXPECT_TRUE(isVisible(whyButton)) << "the tuning read failed";
}

TEST_F(CheckListTest, IsNotBuiltUnasked) {
  openBase();
  EXPECT_FALSE(isVisible("checkList"));
  EXPECT_EQ(find("checkList").findChildren<CheckRow*>().size(), 0);
  EXPECT_EQ(survey_.timesTold(), 0);
}

TEST_F(CheckListTest, ShowsEveryCheckWithItsOutcomeFindingAndNextStep) {
  openBase();
  examine();
  EXPECT_TRUE(isVisible("checkList"));
  EXPECT_EQ(rows(), expectedRows());
  EXPECT_TRUE(text("checksSummary").starts_with(checksSummary(checks()) + ", at "));
  EXPECT_EQ(name("checksSummary"), text("checksSummary"));
  for (const DoctorCheck& check : checks()) {
    const CheckRow& row = find<CheckRow>("check " + check.id);
    EXPECT_EQ(row.accessibleName().toStdString(), spokenCheck(check));
    EXPECT_EQ(find("checkFinding", row).accessibleName().toStdString(), spokenCheck(check));
  }
}

TEST_F(CheckListTest, ShowsAnotherOutcomeInTheSameRows) {
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  open();
  visit(Section::base);
  examine();
  const Lines silent = rows();
  EXPECT_EQ(silent, expectedRows());
  behave([](SimulatedBehaviour& b) {
    b.silent = false;
    b.tuningSilent = true;
  });
  click("checkAgainButton");
  settle();
  EXPECT_EQ(rows(), expectedRows());
  EXPECT_NE(rows(), silent);
}

TEST_F(CheckListTest, IsBusyWhileItChecks) {
  openBase();
  const auto gate = std::make_shared<Gate>();
  survey_.beforeTelling([gate] { gate->pass(); });
  click(whyButton);
  gate->awaitArrival();
  EXPECT_EQ(text("checksSummary"), "Checking\u2026");
  const std::string waits = std::string("disabled: ") + waitReason;
  EXPECT_EQ(state(whyButton), waits);
  EXPECT_EQ(state("checkAgainButton"), waits);
  for (const char* const reportButton : {"copyReportButton", "saveReportButton"}) {
    EXPECT_EQ(state(reportButton), "disabled: Wait until the checks have ended");
  }
  gate->open();
  settle();
  for (const char* const enabled : {"checkAgainButton", "copyReportButton", "saveReportButton"}) {
    EXPECT_EQ(state(enabled), "enabled");
  }
}

TEST_F(CheckListTest, TheKeyboardStaysWhereItWas) {
  openBase();
  focus(whyButton);
  press(Qt::Key_Space);
  settle();
  EXPECT_EQ(focused(), whyButton);
  focus("checkAgainButton");
  press(Qt::Key_Space);
  settle();
  EXPECT_EQ(focused(), "checkAgainButton");
  EXPECT_EQ(survey_.timesTold(), 2);
}

TEST_F(CheckListTest, GoesWithTheTrouble) {
  openBase();
  examine();
  base();
  settle();
  EXPECT_FALSE(isVisible("checkList"));
  base().unplug();
  settle();
  EXPECT_FALSE(isVisible("checkList"));
  EXPECT_TRUE(isVisible(whyButton));
}

TEST_F(CheckListTest, CopiesTheReport) {
  openBase();
  examine();
  click("copyReportButton");
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), model().report());
}

TEST_F(CheckListTest, SavesTheReport) {
  openBase();
  examine();
  click("saveReportButton");
  EXPECT_EQ(panels_.takeRequests(),
            (Lines{"save: Save the report [Save] report, quorvane-report.txt"}));
}

TEST_F(CheckListTest, FitsTheSmallestWindow) {
  openBase();
  window().resize(860, 560);
  examine();
  EXPECT_EQ(window().size(), QSize(860, 560));
  for (const CheckRow* const row : find("checkList").findChildren<CheckRow*>()) {
    for (const QLabel* const label : row->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      EXPECT_GE(label->height(), label->heightForWidth(label->width()))
          << label->text().toStdString();
      EXPECT_LE(label->mapTo(row, label->rect().topRight()).x(), row->width());
    }
  }
}

}  // namespace
}  // namespace quorvane
