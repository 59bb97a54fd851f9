#include "ui/preset_text.h"

#include <fmt/format.h>

#include "support/text.h"
#include "ui/row_text.h"

namespace quorvane {
namespace {

RowState rowOf(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  return {value.parameter, value.value, {}, product};
}

bool isAutomatic(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  return rowOf(value, product).isAuto() || (value.parameter == TuningParameter::sensitivity &&
                                            value.value == specialValue(value.parameter));
}

// "Sensitivity", where the title goes on to explain itself.
std::string_view shortTitle(TuningParameter parameter) {
  const std::string_view title = parameter.title();
  return title.substr(0, title.find(" ("));
}

}  // namespace

bool isWord(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  return isAutomatic(value, product) || !valueWord(rowOf(value, product), value.value).empty();
}

std::string presetValue(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  if (isAutomatic(value, product)) return "AUTO";
  const std::string word = valueWord(rowOf(value, product), value.value);
  return word.empty() ? fmt::format("{}", value.value) : word;
}

std::string presetSummary(const TuningPreset& preset,
                          const std::optional<FanatecProduct>& product) {
  std::string summary;
  for (const TuningParameter parameter : listedParameters(product)) {
    const auto value = preset.value(parameter);
    if (!value) continue;
    const ParameterValue pair{parameter, *value};
    summary += summary.empty() ? "" : ", ";
    summary += fmt::format("{} {}", shortTitle(parameter), presetValue(pair, product));
    const std::string unit = unitOf(parameter);
    if (!unit.empty() && !isWord(pair, product)) summary += " " + unit;
  }
  return summary.empty() ? "No values" : summary;
}

std::string applyQuestion(const TuningPreset& preset) {
  return fmt::format("Apply \"{}\" to the active set?", oneLine(preset.name));
}

std::string applyConsequence(const TuningSnapshot& menu) {
  const bool isAutoSet = menu.slot() == autoSet;
  std::string text = fmt::format("Values will be written to set {} and verified one by one.",
                                 isAutoSet ? "A (Auto Setup)" : "C (Custom)");
  if (isAutoSet) text += " This is the Auto set, so they will not survive a power cycle.";
  return text;
}

}  // namespace quorvane
