#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "presets/tuning_preset.h"
#include "protocol/tuning_parameter.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// What one word of `set` asks for: "FF=80" a value, "FF+=5" and "FF-=5" a change of the present
// one.
struct Assignment {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t number = 0;  // display units; as a value of SEN, 0 is AUTO
  bool isRelative = false;

  bool operator==(const Assignment&) const = default;
};

// Reads the words of `set` and puts them in menu order. Throws UsageError for a word that is not of
// one of the forms, an unknown code, a value that is none, a change that is no multiple of the
// parameter's step or of a parameter whose values are words, and a parameter that is named twice.
std::vector<Assignment> parseAssignments(const std::vector<std::string>& words);

std::vector<Assignment> assignmentsOf(const std::vector<ParameterValue>& values);

// The assignment as it is typed: "FF=80", "FF+=5", "FF-=5".
std::string assignmentText(const Assignment& assignment);

// The value that an assignment means, or why there is none.
struct WantedValue {
  std::optional<std::int64_t> value;  // none when the present one is no number to add to
  std::optional<std::string> error;
};

// A change counts from the value in `menu`. It has an error where that value is a word (AUT, OFF)
// and where the result is outside the range; a plain value has none.
WantedValue wantedValue(const Assignment& assignment, const TuningSnapshot& menu,
                        const std::optional<FanatecProduct>& product);

}  // namespace quorvane
