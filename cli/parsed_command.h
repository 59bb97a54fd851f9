#pragma once

#include <functional>
#include <vector>

#include "cli/context.h"

namespace CLI {
class App;
}

namespace quorvane {

// A command's parser, and the function to run when the parser has matched the words.
struct ParsedCommand {
  CLI::App* parser;
  std::function<ExitStatus(const CommandContext&)> run;
  ExitStatus whenFailed = ExitStatus::failed;  // after an exception of `run`
};

using ParsedCommands = std::vector<ParsedCommand>;

}  // namespace quorvane
