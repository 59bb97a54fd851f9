#include "ui/base/check_text.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

const DoctorCheck passed{"usb", "Wheel base attached", CheckOutcome::passed, "it is there", ""};
const DoctorCheck failed{"access", "Permission", CheckOutcome::failed, "/dev/hidraw3 is not yours",
                         "Install the rule."};
const DoctorCheck skipped{"tuning", "Tuning menu", CheckOutcome::notChecked, "it is not open", ""};

TEST(CheckText, HasAWordForEveryOutcome) {
  EXPECT_STREQ(outcomeWord(CheckOutcome::passed), "Passed");
  EXPECT_STREQ(outcomeWord(CheckOutcome::failed), "Failed");
  EXPECT_STREQ(outcomeWord(CheckOutcome::notChecked), "Not checked");
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

TEST(CheckText, IsSpokenWhole) {
  EXPECT_EQ(spokenCheck(passed), "Wheel base attached: passed. it is there");
  EXPECT_EQ(spokenCheck(failed),
            "Permission: failed. /dev/hidraw3 is not yours. Next step: Install the rule.");
  EXPECT_EQ(spokenCheck(skipped), "Tuning menu: not checked. it is not open");
}

}  // namespace
}  // namespace quorvane
