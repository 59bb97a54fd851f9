#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "presets/tuning_preset.h"
#include "protocol/product.h"
#include "protocol/tuning_snapshot.h"

// Texts of the section "Presets".
namespace quorvane {

// A preset's value without its unit: "AUTO", "OFF", "PEA", "100".
std::string presetValue(const ParameterValue& value, const std::optional<FanatecProduct>& product);

// Whether the value is shown as a word, not as a number in a range.
bool isWord(const ParameterValue& value, const std::optional<FanatecProduct>& product);

// All values in menu order, for a screen reader: "Sensitivity AUTO, Force feedback strength 100 %".
std::string presetSummary(const TuningPreset& preset, const std::optional<FanatecProduct>& product);

// What would be different at the base with a preset, in a few words; nothing without a menu, and
// for a preset without values for the base.
struct PresetBadge {
  enum class Kind { none, same, differs, stronger };

  Kind kind = Kind::none;
  std::string text;  // "On the base now", "5 differ", "Stronger: FF 65 → 100"

  bool operator==(const PresetBadge&) const = default;
};
PresetBadge presetBadge(const TuningPreset& preset, const std::optional<TuningSnapshot>& menu,
                        const std::optional<FanatecProduct>& product);

// The question before a preset is applied, and the consequence of a yes; with staged edits, a line
// of its own says that they stay.
std::string applyQuestion(const TuningPreset& preset);
std::string applyConsequence(const TuningSnapshot& menu, std::size_t staged);

}  // namespace quorvane
