#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// Runs `quorvanectl` with its words (without the program's name): parses them, carries out one
// command in the world and returns the exit status.
ExitStatus runCommandLine(const std::vector<std::string>& words, const World& world);

// Only reads the words: prints what is wrong with them, the help, the version or completions, and
// returns the exit status of that; none, and prints nothing, when they name a command to carry out.
std::optional<ExitStatus> readCommandLine(const std::vector<std::string>& words,
                                          const World& world);

}  // namespace quorvane
