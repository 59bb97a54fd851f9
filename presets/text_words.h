#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quorvane {

// A word of a text that people pass on, and what separates it from the word before.
struct TextWord {
  std::string_view text;      // in the text that was split, which must outlive it
  bool startsLine = false;    // also true for the first word
  bool startsPhrase = false;  // also after a comma, a bracket, a full stop or the like
  bool isJoined = false;      // after ":" or "="
  bool followsDash = false;   // after a dash that stands alone

  // Whether only blanks are between this word and the one before.
  bool isAdjacent() const { return !startsPhrase && !isJoined && !followsDash; }
};

// Splits a text into words at white space and punctuation. Punctuation that could change a value
// stays in its word: the sign of a number, a point or comma between digits, "+", "~", "<", "?".
// Dashes and slashes that stand alone, quotation marks, bullets and a full stop at the end of a
// word belong to no word. Bytes that are not UTF-8 are letters.
std::vector<TextWord> textWords(std::string_view text);

}  // namespace quorvane
