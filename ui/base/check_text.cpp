#include "ui/base/check_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "support/text.h"

namespace quorvane {

const char* outcomeWord(CheckOutcome outcome) {
  switch (outcome) {
    case CheckOutcome::passed:
      return "Passed";
    case CheckOutcome::failed:
      return "Failed";
    case CheckOutcome::notChecked:
      return "Not checked";
  }
  return "";
}

std::string checksSummary(const std::vector<DoctorCheck>& checks) {
  const auto failed = std::count_if(checks.begin(), checks.end(), [](const DoctorCheck& check) {
    return check.outcome == CheckOutcome::failed;
  });
  if (failed == 0) return "No check failed";
  return fmt::format("{} of {} failed", failed, counted(checks.size(), "check"));
}

std::string nextStepText(const DoctorCheck& check) {
  return check.nextStep.empty() ? std::string() : "Next step: " + check.nextStep;
}

std::string spokenCheck(const DoctorCheck& check) {
  std::string spoken =
      fmt::format("{}: {}. {}", check.title, lowerCase(outcomeWord(check.outcome)), check.finding);
  if (!check.nextStep.empty()) spoken += ". " + nextStepText(check);
  return spoken;
}

}  // namespace quorvane
