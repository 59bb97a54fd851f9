#pragma once

#include <string>
#include <vector>

#include "cli/context.h"

namespace CLI {
class App;
}

namespace quorvane {

// The word that asks for completions, in the place of a command.
inline constexpr const char* completionWord = "complete";

// For the completion scripts of the shells: prints what the last of the words may become, one
// candidate to a line, followed by a tab and its description. A line with a tab and "files" stands
// for the names of files. Words before the last one are those of the command line so far, the
// program's name left out; a candidate that ends in "=" wants more to follow it.
//
// Never fails: what cannot be looked up is not offered.
ExitStatus printCompletions(const CLI::App& app, const std::vector<std::string>& words,
                            const World& world);

}  // namespace quorvane
