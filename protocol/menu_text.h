#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/tuning_parameter.h"

// Formats and parses the values of the tuning menu. Values are in display units. Without a product,
// functions assume the fullest menu (see TuningParameter).
namespace quorvane::MenuText {

// The first word of the value's label, as the base's display shows it: "AUT", "OFF", "LIN", "CbP".
// Also for the value that is written for it: 0 is "AUT". Empty for numbers.
std::string word(TuningParameter parameter, std::int64_t value,
                 const std::optional<FanatecProduct>& product);

// word(), or the number with its unit: "80 %", "900 deg", "AUT", "PEA".
std::string shortText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product);

// The whole label, or the number with its unit: "900 deg", "OFF", "CbP (clutch bite point)".
std::string text(TuningParameter parameter, std::int64_t value,
                 const std::optional<FanatecProduct>& product);

// The text of a preset's value, without a unit: "AUTO", "OFF", "PEA", "100".
std::string presetText(TuningParameter parameter, std::int64_t value,
                       const std::optional<FanatecProduct>& product);

// "0 to 100 %, step 10", without the special value.
std::string range(TuningParameter parameter, const std::optional<FanatecProduct>& product);

// The words that parse() accepts besides numbers, in the order of their values: "AUTO", "LIN".
std::vector<std::string> words(TuningParameter parameter);

// True if values are numbers (one may be the special value); false if every value has a label.
bool hasNumbers(TuningParameter parameter);

// Parses a decimal number, optionally followed by the setting's unit: "80", "80%", "900 deg".
// Ignores a note in brackets: "80 % (250 ms)". Does not accept a plus sign.
std::optional<std::int64_t> parseNumber(TuningParameter parameter, std::string_view word);

// Parses a value to write: a number; a label or its first word, ignoring case ("OFF", "LIN",
// "CbP (clutch bite point)"); "AUTO" or "AUT" for the steering angle, which give 0. Accepts every
// result of text().
std::optional<std::int64_t> parse(TuningParameter parameter, std::string_view word);

}  // namespace quorvane::MenuText
