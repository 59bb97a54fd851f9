#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/tuning_parameter.h"

namespace quorvane {

// A value to write, in display units. 0 degrees stand for the automatic steering angle.
struct Assignment {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t value = 0;

  bool operator==(const Assignment&) const = default;
};

// The value that a word stands for: a decimal number, or the first word of one of the parameter's
// labels ignoring case ("OFF", "LIN", "CbP"), or "AUTO" and "AUT" for the steering angle.
std::optional<std::int64_t> parseValueWord(TuningParameter parameter, std::string_view word);

// Reads "CODE=VALUE" words and puts them in menu order. Throws UsageError for a word that is not of
// that form, an unknown code, a value that is none, and a parameter that is named twice.
std::vector<Assignment> parseAssignments(const std::vector<std::string>& words);

// The value as people read it: "900 deg", "OFF", "CbP (clutch bite point)", "3".
std::string valueText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product);

}  // namespace quorvane
