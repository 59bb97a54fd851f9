#pragma once

#include "doctor/facts.h"
#include "doctor/verdict.h"

namespace quorvane {

// Reads the preset file like the programs, and checks whether it could be written. Changes nothing.
// Blocks for as long as the file system does.
PresetFacts examinePresets(const std::optional<std::filesystem::path>& file);

// The facts when examinePresets() did not return in time.
PresetFacts presetsOutOfTime(const std::optional<std::filesystem::path>& file);

Verdict judgePresets(const PresetFacts& presets);

}  // namespace quorvane
