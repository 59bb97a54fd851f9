#pragma once

#include "cli/parsed_command.h"

namespace quorvane {

// Adds `presets` and its subcommands to the program's parser.
void addPresetCommands(CLI::App& app, ParsedCommands& commands);

}  // namespace quorvane
