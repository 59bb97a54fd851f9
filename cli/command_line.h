#pragma once

#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// Runs `quorvanectl` with its words (without the program's name): parses them, carries out one
// command in the world and returns the exit status.
ExitStatus runCommandLine(const std::vector<std::string>& words, const World& world);

}  // namespace quorvane
