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

}  // namespace quorvane
