#pragma once

#include <string>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// What a pasted text has.
struct PastedSettings {
  std::vector<TuningPreset> presets;       // at least one; without a name for a text
  std::vector<std::string> notUnderstood;  // see SettingsInText
};

}  // namespace quorvane
