#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// How many insertions, deletions, replacements and swaps of neighbours turn one word into the
// other, ignoring the case of ASCII letters.
std::size_t editDistance(std::string_view a, std::string_view b);

// The choice that a misspelt word stands for: at most one edit away for up to three letters, two
// for longer words. None when no choice is that near, or several are equally near.
std::optional<std::string> nearestWord(std::string_view word,
                                       const std::vector<std::string>& choices);

// The word as a POSIX shell has to be given it.
std::string shellWord(const std::string& word);

// The words as a line to type, the program's name first.
std::string commandText(const std::vector<std::string>& words);

// The assignments that the words of `set` probably mean: "SEN 900", "FF:80" and "FX=80" are
// "SEN=900", "FF=80" and "FF=80". Empty when they make no sense either.
std::vector<std::string> likelyAssignments(const std::vector<std::string>& words);

}  // namespace quorvane
