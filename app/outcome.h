#pragma once

#include <cstddef>
#include <map>

#include "protocol/tuning_parameter.h"

namespace quorvane {

// What the last write meant for a value of the menu.
enum class Outcome {
  taken,       // by the base, in the last save
  notTaken,    // by the base; the value is still staged
  leftUnsaved  // a preset was applied, and the staged value was not part of it
};

// The outcomes of values, in menu order.
using Outcomes = std::map<TuningParameter, Outcome>;

// How many values have this outcome.
std::size_t count(const Outcomes& outcomes, Outcome outcome);

// Removes the outcomes of values that the base took.
void eraseTaken(Outcomes& outcomes);

// Removes the value's outcome that holds only until the value is edited or reverted.
void eraseUnsaved(Outcomes& outcomes, TuningParameter parameter);

}  // namespace quorvane
