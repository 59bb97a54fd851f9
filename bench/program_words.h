#pragma once

#include <stdexcept>
#include <string_view>
#include <vector>

namespace quorvane {

// The words of one program, terminated by a null pointer as for exec().
using ProgramWords = std::vector<char*>;

// Parses "-- PROGRAM [ARGUMENT...] [-- PROGRAM [ARGUMENT...]]..." at the end of a command line.
// Throws std::invalid_argument for anything else.
inline std::vector<ProgramWords> programsOf(char** word) {
  std::vector<ProgramWords> programs;
  for (; *word != nullptr; ++word) {
    if (std::string_view(*word) == "--") {
      programs.emplace_back();
    } else {
      if (programs.empty()) throw std::invalid_argument("the programs come after --");
      programs.back().push_back(*word);
    }
  }
  for (ProgramWords& program : programs) {
    if (program.empty()) throw std::invalid_argument("a program has no name");
    program.push_back(nullptr);
  }
  return programs;
}

}  // namespace quorvane
