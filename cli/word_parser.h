#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quorvane {

// Parses the words of a command line with the complete parser, each word as it was typed: CLI11
// itself splits "[a,b]" into several words. Throws CLI::ParseError.
void parseWords(CLI::App& app, std::vector<std::string> words);

// Removes parseWords()'s marks from a text of the parser, such as a word or an error message.
std::string asTyped(std::string text);

}  // namespace quorvane
