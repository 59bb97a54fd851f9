#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/tuning_parameter.h"

namespace quorvane {

// The words that a parameter takes besides numbers, in the order of their values: the first words
// of its labels, "AUTO" for the steering angle.
std::vector<std::string> valueWords(TuningParameter parameter);

// Whether the parameter's values are numbers, maybe with a word for one of them, and not all words.
bool hasNumbers(TuningParameter parameter);

// A decimal number, with or without the parameter's unit behind it: "80", "80%", "900 deg".
// A note in brackets is left out: "80 % (250 ms)". There is no plus sign.
std::optional<std::int64_t> parseNumberWord(TuningParameter parameter, std::string_view word);

// The value that a word stands for: a number, or a label of the parameter or its first word
// ignoring case ("OFF", "LIN", "CbP (clutch bite point)"), or "AUTO" and "AUT" for the steering
// angle, which are 0. Takes whatever valueText makes.
std::optional<std::int64_t> parseValueWord(TuningParameter parameter, std::string_view word);

// The value in the coding of what is written: the automatic angle of the product, which its menu
// decodes to a number above its largest angle, is 0.
std::int64_t writtenValue(TuningParameter parameter, std::int64_t value,
                          const std::optional<FanatecProduct>& product);

// The value as people read it: "900 deg", "OFF", "CbP (clutch bite point)", "3".
std::string valueText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product);

}  // namespace quorvane
