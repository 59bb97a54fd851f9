#include "cli/command_line.h"

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  return static_cast<int>(quorvane::runCommandLine(words, quorvane::World{}));
}
