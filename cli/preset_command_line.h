#pragma once

#include "cli/parsed_command.h"

namespace quorvane {

// Adds `presets` and the commands below it to the parser of the program.
void addPresetCommands(CLI::App& app, ParsedCommands& commands);

}  // namespace quorvane
