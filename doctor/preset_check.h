#pragma once

#include "doctor/facts.h"
#include "doctor/verdict.h"

namespace quorvane {

// Reads the file as the programs do, and looks whether it could be written. Changes nothing.
PresetFacts examinePresets(const std::optional<std::filesystem::path>& file);

Verdict judgePresets(const PresetFacts& presets);

}  // namespace quorvane
