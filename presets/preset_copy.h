#pragma once

#include <string>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// A name for a copy that none of `presets` has, ignoring the case of ASCII letters: "Spa copy",
// else "Spa copy 2" and so on. The copy of "Spa copy 2" is called after "Spa", too.
std::string copyName(const std::string& name, const std::vector<TuningPreset>& presets);

// The same texts and values under another name, as one of the user's own presets with a new id.
TuningPreset copyOf(const TuningPreset& preset, std::string name);

}  // namespace quorvane
