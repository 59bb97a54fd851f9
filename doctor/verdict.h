#pragma once

#include <string>
#include <utility>

#include "doctor/check.h"

namespace quorvane {

// The result of a check: a DoctorCheck without id and title.
struct Verdict {
  CheckOutcome outcome = CheckOutcome::notChecked;
  std::string finding;
  std::string nextStep;

  static Verdict pass(std::string finding) {
    return {CheckOutcome::passed, std::move(finding), {}};
  }
  static Verdict fail(std::string finding, std::string nextStep) {
    return {CheckOutcome::failed, std::move(finding), std::move(nextStep)};
  }
  static Verdict skip(std::string why) { return {CheckOutcome::notChecked, std::move(why), {}}; }
};

}  // namespace quorvane
