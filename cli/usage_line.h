#pragma once

#include <string>

namespace CLI {
class App;
}

namespace quorvane {

// The command's names from below the program's on: "presets save"; empty for the program.
std::string commandPath(const CLI::App& command);

// How the command is typed: "quorvanectl presets save NAME".
std::string usageLine(const CLI::App& command);

// Has the parser, and the commands added to it later, begin its help with that line.
void useUsageLine(CLI::App& app);

}  // namespace quorvane
