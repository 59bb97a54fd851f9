#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "presets/tuning_preset.h"
#include "protocol/product.h"
#include "protocol/tuning_snapshot.h"

// What the presets section shows and says, as text.
namespace quorvane {

// A preset's value without its unit: "AUTO", "OFF", "PEA", "100".
std::string presetValue(const ParameterValue& value, const std::optional<FanatecProduct>& product);

// Whether the value is a word, which has no place on a scale.
bool isWord(const ParameterValue& value, const std::optional<FanatecProduct>& product);

// All values in menu order, for a screen reader: "Sensitivity AUTO, Force feedback strength 100 %".
std::string presetSummary(const TuningPreset& preset, const std::optional<FanatecProduct>& product);

// The question before a preset is applied, and what follows from a yes.
std::string applyQuestion(const TuningPreset& preset);
std::string applyConsequence(const TuningSnapshot& menu);

}  // namespace quorvane
