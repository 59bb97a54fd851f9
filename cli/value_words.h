#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"
#include "protocol/tuning_parameter.h"

namespace quorvane {

// The words that a parameter takes besides numbers, in the order of their values: the first words
// of its labels, "AUTO" for the steering angle.
std::vector<std::string> valueWords(TuningParameter parameter);

// The value that a word stands for: a decimal number, or the first word of one of the parameter's
// labels ignoring case ("OFF", "LIN", "CbP"), or "AUTO" and "AUT" for the steering angle.
std::optional<std::int64_t> parseValueWord(TuningParameter parameter, std::string_view word);

// Reads "CODE=VALUE" words and puts them in menu order. Throws UsageError for a word that is not of
// that form, an unknown code, a value that is none, and a parameter that is named twice.
std::vector<ParameterValue> parseAssignments(const std::vector<std::string>& words);

// The value as people read it: "900 deg", "OFF", "CbP (clutch bite point)", "3".
std::string valueText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product);

}  // namespace quorvane
