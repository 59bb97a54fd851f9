#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// The id by which people name the preset in a later run, which a built-in one has none of.
std::string idText(const TuningPreset& preset);

// A line for each preset: name, game, number of values and source, in columns.
std::string listText(const std::vector<TuningPreset>& presets);

// All that the preset holds. Its values stand in menu order with their titles; codes that are no
// setting come last.
std::string fullText(const TuningPreset& preset);

}  // namespace quorvane
