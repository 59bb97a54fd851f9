#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/base/check_row.h"
#include "ui/base/check_text.h"
#include "ui/kit/form.h"

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

  std::vector<DoctorCheck> checksThat(CheckOutcome outcome) {
    std::vector<DoctorCheck> found;
    for (const DoctorCheck& check : checks()) {
      if (check.outcome == outcome) found.push_back(check);
    }
    return found;
  }

  // The visible text of each failed check: "TITLE | finding | next step | command | afterwards".
  Lines rows() {
    Lines lines;
    for (const CheckRow* const row : find("checkList").findChildren<CheckRow*>()) {
      std::string line;
      for (const char* const part :
           {"checkTitle", "checkFinding", "checkNextStep", "checkCommand", "checkAfterwards"}) {
        const auto& label = find<QLabel>(part, *row);
        if (label.isVisible()) line += (line.empty() ? "" : " | ") + textOf(label);
      }
      lines.push_back(line);
    }
    return lines;
  }

  Lines expectedRows() {
    Lines lines;
    for (const DoctorCheck& check : checksThat(CheckOutcome::failed)) {
      std::string line = check.title + " | " + check.finding + " | " + nextStepText(check);
      if (!check.command.empty()) line += " | " + check.command;
      if (!afterCommandText(check).empty()) line += " | " + afterCommandText(check);
      lines.push_back(line);
    }
    return lines;
  }

  // Facts of a base that udev has not announced and to which no rule grants access.
  void tellUnready() {
    MachineFacts facts;
    facts.hasUSB = true;
    facts.hasUdev = true;
    facts.seatedUsers = {1000};
    facts.user.id = 1000;
    HIDFacts& hid = facts.hid.emplace_back();
    hid.name = "0003:0EB7:0020.0001";
    hid.productID = 0x0020;
    hid.driver = "hid-generic";
    NodeFacts& node = hid.node.emplace();
    node.path = "/dev/hidraw3";
    node.exists = true;
    node.mode = 0600;
    survey_.tell(facts);
  }

  QAbstractButton& line(const std::string& fold) { return find<QAbstractButton>(fold + "Line"); }

  // Title and finding of each row of an unfolded line.
  Lines unfolded(const std::string& fold) {
    Lines lines;
    for (const FormRow* const row : find(fold).findChildren<FormRow*>()) {
      if (!row->isVisible()) continue;
      lines.push_back(row->findChild<QLabel*>()->text().toStdString() + " | " +
                      row->value().toStdString());
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

TEST_F(CheckListTest, ShowsWhatFailedWithFindingNextStepAndCommand) {
  tellUnready();
  openBase();
  examine();
  EXPECT_TRUE(isVisible("checkList"));
  EXPECT_EQ(rows(), expectedRows());
  ASSERT_EQ(rows().size(), 2U);
  EXPECT_EQ(rows()[0],
            "Device node | /dev/hidraw3 is there, but udev has not announced it | Next step: Have "
            "udev go through the devices again: | sudo udevadm trigger && sudo udevadm settle");
  EXPECT_EQ(text("checksSummary"), checksSummary(checks()));
  EXPECT_TRUE(text("checksTime").starts_with("at "));
  EXPECT_EQ(name("checksSummary"), text("checksSummary") + ", " + text("checksTime"));
  for (const DoctorCheck& check : checksThat(CheckOutcome::failed)) {
    const CheckRow& row = find<CheckRow>("check " + check.id);
    EXPECT_EQ(row.accessibleName().toStdString(), spokenCheck(check));
    EXPECT_EQ(find("checkFinding", row).accessibleName().toStdString(), spokenCheck(check));
  }
}

TEST_F(CheckListTest, CopiesACommand) {
  tellUnready();
  openBase();
  examine();
  const CheckRow& row = find<CheckRow>("check node");
  click(find("copyCommandButton", row));
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            QStringLiteral("sudo udevadm trigger && sudo udevadm settle"));
  EXPECT_EQ(find("copyCommandButton", row).accessibleName(),
            QStringLiteral("Copy the command, Device node"));
}

TEST_F(CheckListTest, FoldsWhatPassedOrWasNotCheckedToALineEach) {
  tellUnready();
  openBase();
  examine();
  for (const auto& [fold, outcome] : {std::pair("passedChecks", CheckOutcome::passed),
                                      std::pair("uncheckedChecks", CheckOutcome::notChecked)}) {
    const auto folded = checksThat(outcome);
    ASSERT_FALSE(folded.empty());
    Lines wanted;
    for (const DoctorCheck& check : folded) wanted.push_back(check.title + " | " + check.finding);
    EXPECT_TRUE(line(fold).isVisible());
    EXPECT_EQ(textOf(line(fold)), countOf(outcome, folded.size()));
    EXPECT_EQ(line(fold).accessibleName().toStdString(),
              countOf(outcome, folded.size()) + ", " + titlesOf(folded));
    EXPECT_EQ(unfolded(fold), Lines{});
    click(line(fold));
    EXPECT_EQ(unfolded(fold), wanted);
    click(line(fold));
    EXPECT_EQ(unfolded(fold), Lines{});
  }
}

TEST_F(CheckListTest, ALineIsUnfoldedByTheKeyboardToo) {
  openBase();
  examine();
  focus("uncheckedChecksLine");
  press(Qt::Key_Space);
  EXPECT_NE(unfolded("uncheckedChecks"), Lines{});
  EXPECT_EQ(focused(), "uncheckedChecksLine");
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
  EXPECT_EQ(state("checkAgainButton"), "enabled");
  for (const char* const reportButton : {"copyReportButton", "saveReportButton"}) {
    EXPECT_TRUE(state(reportButton).starts_with("enabled: The report is for a bug report: "));
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
  tellUnready();
  openBase();
  window().resize(860, 560);
  examine();
  EXPECT_EQ(window().size(), QSize(860, 560));
  for (const char* const fold : {"passedChecks", "uncheckedChecks"}) click(line(fold));
  settle();
  for (const QLabel* const label : find("checkList").findChildren<QLabel*>()) {
    if (!label->isVisible()) continue;
    EXPECT_GE(label->height(), label->heightForWidth(label->width()))
        << label->text().toStdString();
    EXPECT_LE(label->mapTo(&find("checkList"), label->rect().topRight()).x(),
              find("checkList").width());
  }
}

TEST_F(CheckListTest, ItsButtonsAreInTheSmallestWindowWithoutScrolling) {
  tellUnready();
  openBase();
  window().resize(860, 560);
  examine();
  const QRect page(find("basePage").mapTo(&window(), QPoint()), find("basePage").size());
  for (const char* const button : {"checkAgainButton", "copyReportButton", "saveReportButton"}) {
    const QRect place(find(button).mapTo(&window(), QPoint()), find(button).size());
    EXPECT_TRUE(page.contains(place)) << button;
  }
}

}  // namespace
}  // namespace quorvane
