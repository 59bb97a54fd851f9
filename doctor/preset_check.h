#pragma once

#include "doctor/facts.h"
#include "doctor/verdict.h"

namespace quorvane {

// Reads the file as the programs do, and looks whether it could be written. Changes nothing. Blocks
// for as long as the file system does.
PresetFacts examinePresets(const std::optional<std::filesystem::path>& file);

// What is known of presets when reading them did not end.
PresetFacts presetsOutOfTime(const std::optional<std::filesystem::path>& file);

Verdict judgePresets(const PresetFacts& presets);

}  // namespace quorvane
