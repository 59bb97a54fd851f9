#pragma once

#include <string>
#include <utility>

#include "doctor/check.h"

namespace quorvane {

// A next step with a command: "TEXT: COMMAND", and ". AFTERWARDS" if that is not empty.
struct CommandStep {
  std::string text;
  std::string command;
  std::string afterwards{};
};

// The result of a check: a DoctorCheck without id and title.
struct Verdict {
  CheckOutcome outcome = CheckOutcome::notChecked;
  std::string finding;
  std::string nextStep;
  std::string command;

  static Verdict pass(std::string finding) {
    return {CheckOutcome::passed, std::move(finding), {}, {}};
  }
  static Verdict fail(std::string finding, std::string nextStep) {
    return {CheckOutcome::failed, std::move(finding), std::move(nextStep), {}};
  }
  static Verdict fail(std::string finding, CommandStep step) {
    std::string nextStep = step.text + ": " + step.command;
    if (!step.afterwards.empty()) nextStep += ". " + step.afterwards;
    return {CheckOutcome::failed, std::move(finding), std::move(nextStep), std::move(step.command)};
  }
  static Verdict skip(std::string why) {
    return {CheckOutcome::notChecked, std::move(why), {}, {}};
  }
};

}  // namespace quorvane
