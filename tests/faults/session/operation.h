#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/dialogue.h"
#include "tests/session/simulated_session.h"

namespace quorvane {

// An operation of a session, and its expected outcome.
struct Operation {
  std::string name;
  Dialogue dialogue;

  // Runs it and returns the outcome as text: the error's text if it throws.
  std::function<std::string(WheelBase&)> run;

  std::string success;  // the text without a fault
  std::string oldMenu;  // the text when an old menu is taken for the answer; empty: as words()
  bool opensNode = false;
  WheelBase::Use use = WheelBase::Use::writing;  // of the session, unless the operation opens it

  // The name of the session's member function.
  std::string member() const { return name.substr(0, name.find_first_of(", ")); }

  // The text for the errors of the parts.
  std::string words(const Prediction::Errors& errors) const;
};

const std::vector<Operation>& operations();

}  // namespace quorvane
