#pragma once

#include <functional>
#include <vector>

#include "cli/context.h"

namespace CLI {
class App;
}

namespace quorvane {

// A command's parser, and what it runs once the words are known to be its own.
struct ParsedCommand {
  CLI::App* parser;
  std::function<ExitStatus(const CommandContext&)> run;
};

using ParsedCommands = std::vector<ParsedCommand>;

}  // namespace quorvane
