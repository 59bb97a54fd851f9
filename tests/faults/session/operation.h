#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/faults/dialogue.h"
#include "tests/session/simulated_session.h"

namespace quorvane {

// Everything that a session can be asked to do.
struct Operation {
  std::string name;
  Dialogue dialogue;

  // Does it and says in words what came of it: the failure's text as it is.
  std::function<std::string(WheelBase&)> run;

  std::string success;  // the words without a fault
  std::string oldMenu;  // when an old menu is taken for the answer; empty: as the writes say
  bool opensNode = false;
  WheelBase::Use use = WheelBase::Use::writing;  // of the session that does it, if it is open

  // The session's function that does it.
  std::string member() const { return name.substr(0, name.find_first_of(", ")); }

  // The words for failures of the parts.
  std::string words(const Prediction::Errors& errors) const;
};

const std::vector<Operation>& operations();

}  // namespace quorvane
