#pragma once

#include <string>
#include <vector>

#include "cli/context.h"

namespace CLI {
class App;
}

namespace quorvane {

// The first word of a command line that asks for completions.
inline constexpr const char* completionWord = "complete";

// For the shells' completion scripts: prints the completions of the last word, one per line,
// each followed by a tab and its description. A line of a tab and "files" stands for file names.
// `words` is the command line so far without the program's name. A candidate that ends in "=" is
// not complete: the shell adds no space.
//
// Never fails: leaves out candidates that cannot be looked up.
ExitStatus printCompletions(const CLI::App& app, const std::vector<std::string>& words,
                            const World& world);

}  // namespace quorvane
