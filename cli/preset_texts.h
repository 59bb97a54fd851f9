#pragma once

#include "cli/preset_commands.h"
#include "cli/preset_library.h"

namespace quorvane {

// Puts the given texts into a preset. Throws UsageError for an empty name and for texts that are
// not UTF-8.
void setTexts(TuningPreset& preset, const PresetTexts& texts);

// Says on standard error which id names the preset if another one has its name.
void printRepeatedName(const World& world, const PresetLibrary& library,
                       const TuningPreset& preset);

}  // namespace quorvane
