#include "ui/base/check_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "support/text.h"

namespace quorvane {
namespace {

const char* outcomeWord(CheckOutcome outcome) {
  switch (outcome) {
    case CheckOutcome::passed:
      return "passed";
    case CheckOutcome::failed:
      return "failed";
    case CheckOutcome::notChecked:
      return "not checked";
  }
  return "";
}

// Whether all have the same reason not to have been checked.
bool shareReason(const std::vector<DoctorCheck>& checks) {
  return std::all_of(checks.begin(), checks.end(), [&](const DoctorCheck& check) {
    return check.outcome == CheckOutcome::notChecked && check.finding == checks.front().finding;
  });
}

}  // namespace

std::string checksSummary(const std::vector<DoctorCheck>& checks) {
  const auto failed = std::count_if(checks.begin(), checks.end(), [](const DoctorCheck& check) {
    return check.outcome == CheckOutcome::failed;
  });
  if (failed == 0) return "No check failed";
  return fmt::format("{} of {} failed", failed, counted(checks.size(), "check"));
}

std::string countOf(CheckOutcome outcome, std::size_t count) {
  return fmt::format("{} {}", count, outcomeWord(outcome));
}

std::string titlesOf(const std::vector<DoctorCheck>& checks) {
  std::string titles;
  for (const DoctorCheck& check : checks) titles += (titles.empty() ? "" : ", ") + check.title;
  if (!checks.empty() && shareReason(checks)) titles += ": " + checks.front().finding;
  return titles;
}

std::string nextStepText(const DoctorCheck& check) {
  if (check.nextStep.empty()) return {};
  std::string step = "Next step: " + check.nextStep;
  if (check.command.empty()) return step;
  return step.substr(0, step.find(" " + check.command));
}

std::string afterCommandText(const DoctorCheck& check) {
  const std::size_t command = check.nextStep.find(check.command);
  if (check.command.empty() || command == std::string::npos) return {};
  const std::string rest = check.nextStep.substr(command + check.command.size());
  return rest.substr(std::min(rest.find_first_not_of(". "), rest.size()));
}

std::string spokenCheck(const DoctorCheck& check) {
  std::string spoken =
      fmt::format("{}: {}. {}", check.title, outcomeWord(check.outcome), check.finding);
  if (!check.nextStep.empty()) spoken += ". Next step: " + check.nextStep;
  return spoken;
}

}  // namespace quorvane
