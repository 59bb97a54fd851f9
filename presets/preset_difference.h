#pragma once

#include <string>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// What turned one list of presets into another, in a few words: `added "Rain"`, `renamed "Spa" to
// "Monza", deleted 3`. Empty for equal lists. Names are as they are in the lists.
std::string differenceText(const std::vector<TuningPreset>& before,
                           const std::vector<TuningPreset>& after);

}  // namespace quorvane
