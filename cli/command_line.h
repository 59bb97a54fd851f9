#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// Runs `quorvanectl`: parses the words (without the program's name), runs one command in the
// world and returns the exit status.
ExitStatus runCommandLine(const std::vector<std::string>& words, const World& world);

// Only parses the words: prints their errors, the help, the version or completions and returns the
// exit status. Prints nothing and returns none when they name a command to run.
std::optional<ExitStatus> readCommandLine(const std::vector<std::string>& words,
                                          const World& world);

}  // namespace quorvane
