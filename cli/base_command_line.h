#pragma once

#include "cli/parsed_command.h"

namespace quorvane {

// Adds the commands for a base, or for the machine it is attached to, to the program's parser.
void addBaseCommands(CLI::App& app, ParsedCommands& commands);

}  // namespace quorvane
