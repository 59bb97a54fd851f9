#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quorvane {

// Has the finished parser read the words of a command line, each as it was typed: CLI11 alone takes
// "[a,b]" for several words. Throws CLI::ParseError.
void parseWords(CLI::App& app, std::vector<std::string> words);

// What the parser, or its error, says about the words, with each as it was typed.
std::string asTyped(std::string text);

}  // namespace quorvane
