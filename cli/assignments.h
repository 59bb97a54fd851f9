#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "presets/tuning_preset.h"
#include "protocol/tuning_parameter.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {

// One word of `set`: "FF=80" sets a value, "FF+=5" and "FF-=5" change the current one.
struct Assignment {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t number = 0;  // display units; as a value of SEN, 0 is AUTO
  bool isRelative = false;

  bool operator==(const Assignment&) const = default;
};

// The setting with this code, in either case. Throws UsageError, with the nearest code to suggest.
TuningParameter settingNamed(const std::string& code);

// Parses the words of `set` and sorts them in menu order. Throws UsageError for a word of another
// form, an unknown code, an invalid value, a parameter named twice, and a change that is not a
// multiple of the parameter's step or is of a parameter whose values are words.
std::vector<Assignment> parseAssignments(const std::vector<std::string>& words);

std::vector<Assignment> assignmentsOf(const std::vector<ParameterValue>& values);

// The assignment as typed: "FF=80", "FF+=5", "FF-=5".
std::string assignmentText(const Assignment& assignment);

// The value that an assignment asks for, and the error if it cannot be written.
struct WantedValue {
  std::optional<std::int64_t> value;  // none only with an error
  std::optional<std::string> error;
};

// A change is relative to the value in `menu`. It gives an error when that value is a word (AUT,
// OFF), when the result is out of range and when the product lacks the parameter. A plain value
// gives none.
WantedValue wantedValue(const Assignment& assignment, const TuningSnapshot& menu,
                        const std::optional<FanatecProduct>& product);

}  // namespace quorvane
