#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The number of insertions, deletions, replacements and swaps of neighbours that turn one word into
// the other, ignoring the case of ASCII letters.
std::size_t editDistance(std::string_view a, std::string_view b);

// The choice nearest to a misspelt word: at most one edit away for up to three letters, two for
// longer words. None when no choice is that near, or several are equally near.
std::optional<std::string> nearestWord(std::string_view word,
                                       const std::vector<std::string>& choices);

// The word, quoted for a POSIX shell if needed.
std::string shellWord(const std::string& word);

// A command line to type: the program's name and the words, quoted if needed.
std::string commandText(const std::vector<std::string>& words);

// The assignments that the user of `set` probably meant: "SEN=900", "FF=80" and "FF=80" for
// "SEN 900", "FF:80" and "FX=80". Empty when there is no plausible reading.
std::vector<std::string> likelyAssignments(const std::vector<std::string>& words);

}  // namespace quorvane
