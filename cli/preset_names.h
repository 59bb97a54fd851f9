#pragma once

#include <string>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// The one preset that a word names: by its id in either case, else by exactly its name, else by its
// name ignoring the case of ASCII letters. Throws UsageError, with the candidates, when there is
// none or more than one.
const TuningPreset& presetNamed(const std::vector<TuningPreset>& presets, const std::string& which);

// A new preset's name without the white space around it. Throws UsageError when nothing is left and
// when it is not UTF-8.
std::string presetName(const std::string& text);

}  // namespace quorvane
