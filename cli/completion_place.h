#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace quorvane {

// The context of the last word of an unfinished command line.
struct CompletionPlace {
  const CLI::App* command = nullptr;   // the command of the earlier words
  const CLI::Option* value = nullptr;  // of which the word is a value; null: a command or an option
  std::string lead;                    // the part of the word before the value: "--layout="
  std::string typed;                   // the rest of the word
  bool takesOptions = true;            // false after "--"
  bool simulates = false;              // one of the earlier words is --simulate
  std::vector<std::string> positional;  // the command's earlier positional words
};

// Parses the words like the parser, but reports no errors. The last word is still being typed and
// may be empty.
CompletionPlace completionPlace(const CLI::App& app, const std::vector<std::string>& words);

// Whether the option needs a value, in the same word or the next.
bool takesValue(const CLI::Option& option);

}  // namespace quorvane
