#include "ui/base/check_text.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

const DoctorCheck passed{"usb", "Wheel base attached", CheckOutcome::passed, "it is there", "", ""};
const DoctorCheck failed{
    "access", "Permission", CheckOutcome::failed, "/dev/hidraw3 is not yours", "Install the rule.",
    ""};
const DoctorCheck skipped{"tuning", "Tuning menu", CheckOutcome::notChecked, "it is not open", "",
                          ""};

TEST(CheckText, CountsAnOutcome) {
  EXPECT_EQ(countOf(CheckOutcome::passed, 4), "4 passed");
  EXPECT_EQ(countOf(CheckOutcome::failed, 1), "1 failed");
  EXPECT_EQ(countOf(CheckOutcome::notChecked, 3), "3 not checked");
}

TEST(CheckText, ListsTitlesWithTheReasonThatAllShare) {
  EXPECT_EQ(titlesOf({}), "");
  EXPECT_EQ(titlesOf({passed, passed}), "Wheel base attached, Wheel base attached");
  EXPECT_EQ(titlesOf({skipped, skipped}), "Tuning menu, Tuning menu: it is not open");
  DoctorCheck other = skipped;
  other.finding = "it is simulated";
  EXPECT_EQ(titlesOf({skipped, other}), "Tuning menu, Tuning menu");
}

TEST(CheckText, SumsUp) {
  EXPECT_EQ(checksSummary({}), "No check failed");
  EXPECT_EQ(checksSummary({passed, skipped}), "No check failed");
  EXPECT_EQ(checksSummary({passed, failed, skipped}), "1 of 3 checks failed");
  EXPECT_EQ(checksSummary({failed}), "1 of 1 check failed");
}

TEST(CheckText, OnlyWhatFailedHasANextStep) {
  EXPECT_EQ(nextStepText(failed), "Next step: Install the rule.");
  EXPECT_EQ(nextStepText(passed), "");
}

TEST(CheckText, SeparatesTheCommandFromTheNextStep) {
  EXPECT_EQ(afterCommandText(failed), "");
  DoctorCheck check = failed;
  check.command = "sudo udevadm trigger";
  check.nextStep = "Plug it in again, or: sudo udevadm trigger";
  EXPECT_EQ(nextStepText(check), "Next step: Plug it in again, or:");
  EXPECT_EQ(afterCommandText(check), "");
  check.nextStep += ". If that does not help, restart.";
  EXPECT_EQ(nextStepText(check), "Next step: Plug it in again, or:");
  EXPECT_EQ(afterCommandText(check), "If that does not help, restart.");
}

TEST(CheckText, IsSpokenWhole) {
  EXPECT_EQ(spokenCheck(passed), "Wheel base attached: passed. it is there");
  EXPECT_EQ(spokenCheck(failed),
            "Permission: failed. /dev/hidraw3 is not yours. Next step: Install the rule.");
  EXPECT_EQ(spokenCheck(skipped), "Tuning menu: not checked. it is not open");
}

}  // namespace
}  // namespace quorvane
