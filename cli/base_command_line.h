#pragma once

#include "cli/parsed_command.h"

namespace quorvane {

// Adds the commands that are about a base, or the machine it is attached to, to the parser of the
// program.
void addBaseCommands(CLI::App& app, ParsedCommands& commands);

}  // namespace quorvane
