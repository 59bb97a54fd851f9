#pragma once

#include "cli/parsed_command.h"

namespace quorvane {

// Adds `help [COMMAND...]` to the parser of the program: the help of a command, or of the program.
void addHelpCommand(CLI::App& app, ParsedCommands& commands);

}  // namespace quorvane
