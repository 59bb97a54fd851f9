#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "presets/text_words.h"
#include "protocol/tuning_parameter.h"

namespace quorvane {

// The name of a setting at the beginning of some words.
struct SettingName {
  TuningParameter parameter = TuningParameter::slot;
  std::size_t length = 1;  // in words
  bool isCode = false;     // else a title

  bool operator==(const SettingName&) const = default;
};

// Recognizes a code, in either case, or a title with or without its note in brackets: "brf",
// "Natural damper", "Sensitivity (steering angle)". The longest name counts.
std::optional<SettingName> settingNameAt(std::span<const TextWord> words);

// A value at the beginning of some words.
struct SettingValue {
  std::int64_t value = 0;  // display units
  std::size_t length = 1;  // in words
  bool isBare = false;     // a number without a unit

  bool operator==(const SettingValue&) const = default;
};

// Recognizes a number, alone or with the setting's unit, and the words for its values: "80",
// "80 %", "900 degrees", "AUTO", "off", "Peak", "CbP (clutch bite point)".
std::optional<SettingValue> settingValueAt(std::span<const TextWord> words,
                                           TuningParameter parameter);

}  // namespace quorvane
