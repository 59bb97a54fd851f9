#include "doctor/check.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

// In the order of CheckOutcome.
constexpr std::string_view outcomeTexts[] = {"pass", "fail", "notChecked"};

}  // namespace

std::string_view rawValue(CheckOutcome outcome) {
  return outcomeTexts[static_cast<std::size_t>(outcome)];
}

bool allPassed(const std::vector<DoctorCheck>& checks) {
  return std::none_of(checks.begin(), checks.end(), [](const DoctorCheck& check) {
    return check.outcome == CheckOutcome::failed;
  });
}

}  // namespace quorvane
