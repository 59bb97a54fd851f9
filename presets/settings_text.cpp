#include "presets/settings_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "protocol/menu_text.h"
#include "protocol/setting.h"

namespace quorvane {
namespace {

std::string upperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return text;
}

// The word for a value whose setting has a word for each: "PEAK" for the label "PEA, Peak", "CbP".
// None for a value without a label.
std::optional<std::string> labelWord(const ParameterValue& value) {
  const SettingInfo& setting = settingOf(value.parameter);
  if (!setting.range.contains(value.value)) return std::nullopt;
  const auto index = static_cast<std::size_t>(value.value - setting.range.lower);
  const std::string_view choice = setting.valueLabels.labels[index].choice;
  const std::size_t comma = choice.find(", ");
  if (comma != std::string_view::npos) return upperCase(std::string(choice.substr(comma + 2)));
  return std::string(choice.substr(0, choice.find(' ')));
}

std::string valueText(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  if (MenuText::hasNumbers(value.parameter)) {
    return MenuText::presetText(value.parameter, value.value, product);
  }
  return labelWord(value).value_or(std::to_string(value.value));
}

}  // namespace

std::string settingsText(const TuningPreset& preset, const std::optional<FanatecProduct>& product) {
  std::string text;
  for (const TuningParameter parameter : TuningParameter::adjustable(std::nullopt)) {
    const auto value = preset.value(parameter);
    if (!value) continue;
    if (!text.empty()) text += ", ";
    text += fmt::format("{} {}", parameter.code(), valueText({parameter, *value}, product));
  }
  return text;
}

}  // namespace quorvane
