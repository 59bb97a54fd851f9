#include "protocol/menu_text.h"

#include <fmt/format.h>

#include "protocol/setting.h"
#include "support/text.h"

namespace quorvane::MenuText {
namespace {

constexpr std::string_view degreeSign = "\u00B0";  // accepted for the unit "deg"

// Removes a note in brackets at the end: "CbP (clutch bite point)".
std::string_view withoutNote(std::string_view word) {
  const std::size_t note = word.find(" (");
  return note != std::string_view::npos && word.ends_with(')') ? word.substr(0, note) : word;
}

// Removes the setting's unit at the end: "80%", "900 deg".
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

std::string number(TuningParameter parameter, std::int64_t value) {
  if (parameter.unit().empty()) return std::to_string(value);
  return fmt::format("{} {}", value, parameter.unit());
}

}  // namespace

std::string word(TuningParameter parameter, std::int64_t value,
                 const std::optional<FanatecProduct>& product) {
  if (parameter.isSpecial(value, product)) return std::string(settingOf(parameter).special->word);
  const auto label = parameter.label(value, product);
  return label ? std::string(firstWord(*label)) : std::string();
}

std::string shortText(TuningParameter parameter, std::int64_t value,
                      const std::optional<FanatecProduct>& product) {
  const std::string shown = word(parameter, value, product);
  return shown.empty() ? number(parameter, value) : shown;
}

std::string text(TuningParameter parameter, std::int64_t value,
                 const std::optional<FanatecProduct>& product) {
  const auto label = parameter.label(value, product);
  return label ? std::string(*label) : number(parameter, value);
}

std::string presetText(TuningParameter parameter, std::int64_t value,
                       const std::optional<FanatecProduct>& product) {
  if (parameter.isSpecial(value, product)) {
    return std::string(settingOf(parameter).special->switchWord);
  }
  const std::string shown = word(parameter, value, product);
  return shown.empty() ? std::to_string(value) : shown;
}

std::string range(TuningParameter parameter, const std::optional<FanatecProduct>& product) {
  const ClosedRange amounts = parameter.amounts(product);
  const std::string_view unit = parameter.unit();
  return fmt::format("{} to {}{}{}, step {}", amounts.lower, amounts.upper, unit.empty() ? "" : " ",
                     unit, parameter.step());
}

std::vector<std::string> words(TuningParameter parameter) {
  const SettingInfo& setting = settingOf(parameter);
  if (setting.special) return {std::string(setting.special->switchWord)};
  std::vector<std::string> result;
  for (const ValueLabel& label : setting.valueLabels.labels) {
    result.emplace_back(firstWord(label.text));
  }
  return result;
}

bool hasNumbers(TuningParameter parameter) {
  return settingOf(parameter).valueLabels.labels.empty();
}

std::optional<std::int64_t> parseNumber(TuningParameter parameter, std::string_view word) {
  return parseInteger(withoutUnit(withoutNote(word), parameter.unit()));
}

std::optional<std::int64_t> parse(TuningParameter parameter, std::string_view word) {
  if (const auto parsed = parseNumber(parameter, word)) return parsed;
  word = withoutNote(word);
  const SettingInfo& setting = settingOf(parameter);
  if (setting.special && (equalIgnoringCase(word, setting.special->word) ||
                          equalIgnoringCase(word, setting.special->switchWord))) {
    return setting.special->value;
  }
  std::int64_t value = setting.range.lower;
  for (const ValueLabel& label : setting.valueLabels.labels) {
    if (equalIgnoringCase(firstWord(label.text), word)) return value;
    ++value;
  }
  return std::nullopt;
}

}  // namespace quorvane::MenuText
