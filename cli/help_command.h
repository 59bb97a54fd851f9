#pragma once

#include "cli/parsed_command.h"

namespace quorvane {

// Adds `help [COMMAND...]` to the program's parser: prints the help of a command or the program.
void addHelpCommand(CLI::App& app, ParsedCommands& commands);

}  // namespace quorvane
