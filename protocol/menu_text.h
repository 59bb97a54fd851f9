#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/tuning_parameter.h"

// What the values of the tuning menu are called, and what people type for them. Values are in
// display units; without a product, functions speak of the largest menu there is.
namespace quorvane::MenuText {

// The first word of the value's label, as the base's display shows it: "AUT", "OFF", "LIN", "CbP".
// "AUT" also for the 0 that is written for it. Empty for numbers.
std::string word(TuningParameter parameter, std::int64_t value,
                 const std::optional<FanatecProduct>& product);

// `word`, or the number with its unit: "80 %", "900 deg", "AUT", "PEA".
std::string shortText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product);

// The whole label, or the number with its unit: "900 deg", "OFF", "CbP (clutch bite point)".
std::string text(TuningParameter parameter, std::int64_t value,
                 const std::optional<FanatecProduct>& product);

// As it stands in a preset, without a unit: "AUTO", "OFF", "PEA", "100".
std::string presetText(TuningParameter parameter, std::int64_t value,
                       const std::optional<FanatecProduct>& product);

// "0 to 100 %, step 10". The special value is not in it.
std::string range(TuningParameter parameter, const std::optional<FanatecProduct>& product);

// The words that the setting takes besides numbers, in the order of their values: "AUTO", "LIN".
std::vector<std::string> words(TuningParameter parameter);

// Whether values are numbers, maybe with a word for one of them, and not all words.
bool hasNumbers(TuningParameter parameter);

// A decimal number, with or without the setting's unit behind it: "80", "80%", "900 deg".
// A note in brackets is left out: "80 % (250 ms)". There is no plus sign.
std::optional<std::int64_t> parseNumber(TuningParameter parameter, std::string_view word);

// The value to write for a word: a number, or a label or its first word ignoring case ("OFF",
// "LIN", "CbP (clutch bite point)"), or "AUTO" and "AUT" for the steering angle, which are 0.
// Takes whatever `text` makes.
std::optional<std::int64_t> parse(TuningParameter parameter, std::string_view word);

}  // namespace quorvane::MenuText
