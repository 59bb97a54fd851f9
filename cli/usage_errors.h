#pragma once

#include <string>
#include <vector>

#include "cli/context.h"

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace quorvane {

// The error kind of wrong usage in JSON.
inline constexpr const char* wrongUsageKind = "wrongUsage";

// What is wrong with a command line, in words for the user.
struct WrongUsage {
  std::string message;  // one line, or several
  std::string usage;    // the usage line; empty where it would not help
};

// Explains a parser error in this program's own sentences, with a suggested command line if there
// is one. Not for requests of help or the version.
WrongUsage explainRefusal(const CLI::App& app, const CLI::ParseError& refusal,
                          const std::vector<std::string>& words);

// The same for words that the parser accepted and the command refused.
WrongUsage explainRefusal(const CLI::App& command, const UsageError& refusal,
                          const std::vector<std::string>& words);

// Whether the words contain --json; works even if the parser stopped before it.
bool asksForJson(const std::vector<std::string>& words);

// Prints the error on standard error, and with `json` also as a document on standard output.
ExitStatus reportWrongUsage(const World& world, bool json, const WrongUsage& wrong);

}  // namespace quorvane
