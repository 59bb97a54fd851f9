#pragma once

#include <string>

namespace CLI {
class App;
}

namespace quorvane {

// The command's name with its parents', without the program's: "presets save". Empty for the
// program itself.
std::string commandPath(const CLI::App& command);

// The usage of the command: "quorvanectl presets save NAME".
std::string usageLine(const CLI::App& command);

// Makes the help of the parser, and of commands that are added later, begin with that line.
void useUsageLine(CLI::App& app);

}  // namespace quorvane
