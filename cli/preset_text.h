#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// The id that names the preset in later runs; "(built in)" for a built-in one, which has no lasting
// id.
std::string idText(const TuningPreset& preset);

// A line for each preset: name, game, number of values and source, in columns.
std::string listText(const std::vector<TuningPreset>& presets);

// The whole preset. Values are in menu order with their titles; unknown codes come last.
std::string fullText(const TuningPreset& preset);

}  // namespace quorvane
