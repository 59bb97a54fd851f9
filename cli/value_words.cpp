#include "cli/value_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "support/text.h"

namespace quorvane {
namespace {

// "AUTO" is the word in files and on command lines, "AUT" the one on the display.
constexpr std::array<std::string_view, 2> automaticAngle{"AUTO", "AUT"};

// What stands for degrees besides the unit itself.
constexpr std::string_view degreeSign = "\u00B0";

// The word without a note in brackets behind it: "CbP (clutch bite point)".
std::string_view withoutNote(std::string_view word) {
  const std::size_t note = word.find(" (");
  return note != std::string_view::npos && word.ends_with(')') ? word.substr(0, note) : word;
}

// The number's word without the parameter's unit behind it: "80%", "900 deg".
std::string_view withoutUnit(std::string_view word, std::string_view unit) {
  const bool hasSign = unit == "deg" && word.ends_with(degreeSign);
  const std::size_t length = hasSign ? degreeSign.size() : unit.size();
  if (length == 0 || word.size() <= length) return word;
  if (!hasSign && !equalIgnoringCase(word.substr(word.size() - length), unit)) return word;
  word.remove_suffix(length);
  while (word.ends_with(' ')) word.remove_suffix(1);
  return word;
}

std::string_view firstWord(std::string_view label) { return label.substr(0, label.find(' ')); }

}  // namespace

bool hasNumbers(TuningParameter parameter) {
  return !parameter.label(parameter.allowedRange(std::nullopt).lower, std::nullopt);
}

std::optional<std::int64_t> parseNumberWord(TuningParameter parameter, std::string_view word) {
  return parseInteger(withoutUnit(withoutNote(word), parameter.unit()));
}

std::int64_t writtenValue(TuningParameter parameter, std::int64_t value,
                          const std::optional<FanatecProduct>& product) {
  const bool isAutomatic =
      parameter == TuningParameter::sensitivity && parameter.label(value, product);
  return isAutomatic ? 0 : value;
}

std::vector<std::string> valueWords(TuningParameter parameter) {
  if (parameter == TuningParameter::sensitivity) return {"AUTO"};
  std::vector<std::string> words;
  const ClosedRange range = parameter.allowedRange(std::nullopt);
  for (std::int64_t value = range.lower; value <= range.upper; ++value) {
    if (const auto label = parameter.label(value, std::nullopt)) {
      words.emplace_back(firstWord(*label));
    }
  }
  return words;
}

std::optional<std::int64_t> parseValueWord(TuningParameter parameter, std::string_view word) {
  if (const auto number = parseNumberWord(parameter, word)) return number;
  word = withoutNote(word);
  if (parameter == TuningParameter::sensitivity) {
    const bool isAutomatic =
        std::any_of(automaticAngle.begin(), automaticAngle.end(),
                    [&](std::string_view automatic) { return equalIgnoringCase(word, automatic); });
    return isAutomatic ? std::optional<std::int64_t>(0) : std::nullopt;
  }
  const ClosedRange range = parameter.allowedRange(std::nullopt);
  for (std::int64_t value = range.lower; value <= range.upper; ++value) {
    const auto label = parameter.label(value, std::nullopt);
    if (label && equalIgnoringCase(firstWord(*label), word)) return value;
  }
  return std::nullopt;
}

std::string valueText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product) {
  if (const auto label = parameter.label(value, product)) return std::string(*label);
  if (parameter.unit().empty()) return std::to_string(value);
  return fmt::format("{} {}", value, parameter.unit());
}

}  // namespace quorvane
