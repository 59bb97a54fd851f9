#pragma once

#include <string>
#include <vector>

#include "cli/context.h"

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace quorvane {

// The kind of wrong words in JSON.
inline constexpr const char* wrongUsageKind = "wrongUsage";

// What is wrong with a command line, for the person who typed it.
struct WrongUsage {
  std::string message;  // one line, or several
  std::string usage;    // how the command is typed; empty where that would not help
};

// Why the parser refused the words, in this program's own sentences, with the likely line to type
// where there is one. Not for requests of help or the version.
WrongUsage explainRefusal(const CLI::App& app, const CLI::ParseError& refusal,
                          const std::vector<std::string>& words);

// The same for words that the parser took and the command did not.
WrongUsage explainRefusal(const CLI::App& command, const UsageError& refusal,
                          const std::vector<std::string>& words);

// Whether the words ask for JSON, also where the parser did not get to the end of them.
bool asksForJson(const std::vector<std::string>& words);

// Says it on standard error, and as a document when JSON is wanted.
ExitStatus reportWrongUsage(const World& world, bool json, const WrongUsage& wrong);

}  // namespace quorvane
