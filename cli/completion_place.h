#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace quorvane {

// Where the last word of an unfinished command line stands.
struct CompletionPlace {
  const CLI::App* command = nullptr;    // the command that the words got to
  const CLI::Option* value = nullptr;   // what the word is a value of; none: a command or an option
  std::string lead;                     // the part of the word before the value: "--layout="
  std::string typed;                    // the rest of the word
  bool takesOptions = true;             // false after "--"
  bool simulates = false;               // one of the earlier words is --simulate
  std::vector<std::string> positional;  // the command's earlier words that are no options
};

// Reads the words as the parser does, without judging them; the last one, which may be empty, is
// still being typed.
CompletionPlace completionPlace(const CLI::App& app, const std::vector<std::string>& words);

// Whether the option needs a value, in the same word or the next.
bool takesValue(const CLI::Option& option);

}  // namespace quorvane
