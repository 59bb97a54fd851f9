#include "presets/text_words.h"

#include <algorithm>

#include "support/utf8.h"

namespace quorvane {
namespace {

enum class Separator { none, blank, line, joint, phrase };

constexpr std::u32string_view lineEnds = U"\n\r\v\f\u0085\u2028\u2029";
constexpr std::u32string_view joints = U":=\uFF1A\uFF1D";
constexpr std::u32string_view phraseEnds =
    U",;|()[]{}\"*!`"
    U"\u00AB\u00B7\u00BB\u201C\u201D\u201E\u2022\u2023\u2043\u2713\u3001\uFF08\uFF09"
    U"\uFF0C\uFF1B\uFF5C";

// Characters of words that are no word alone.
constexpr std::u32string_view decoration =
    U"-./&#_'\u2010\u2011\u2012\u2013\u2014\u2015\u2018\u2019";
constexpr std::u32string_view dashes = U"-\u2010\u2011\u2012\u2013\u2014\u2015";

bool isOneOf(char32_t character, std::u32string_view characters) {
  return characters.find(character) != std::u32string_view::npos;
}

bool isBlank(char32_t c) {
  return c == U' ' || c == U'\t' || c == U'\u00A0' || (c >= U'\u2000' && c <= U'\u200D') ||
         c == U'\u202F' || c == U'\u205F' || c == U'\u3000' || c == U'\uFEFF';
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

Separator separatorOf(char32_t character) {
  if (isBlank(character)) return Separator::blank;
  if (isOneOf(character, lineEnds)) return Separator::line;
  if (isOneOf(character, joints)) return Separator::joint;
  const bool isShape = character >= U'\u2500' && character <= U'\u25FF';  // boxes, bullets
  return isShape || isOneOf(character, phraseEnds) ? Separator::phrase : Separator::none;
}

char charAt(std::string_view text, std::size_t index) {
  return index < text.size() ? text[index] : '\0';
}

// The separator at an index. A comma between digits is none; a slash before a letter is one unless
// it joins two letters.
Separator separatorAt(std::string_view text, std::size_t index, const Utf8Character& character) {
  const char before = index == 0 ? '\0' : text[index - 1];
  const char after = charAt(text, index + 1);
  if (text[index] == ',' && isDigit(before) && isDigit(after)) return Separator::none;
  if (text[index] == '/' && !isLetter(before) && isLetter(after)) return Separator::phrase;
  return character.code ? separatorOf(*character.code) : Separator::none;
}

bool isDecoration(std::string_view word) {
  while (!word.empty()) {
    const Utf8Character next = firstCharacter(word);
    if (!next.code || !isOneOf(*next.code, decoration)) return false;
    word.remove_prefix(next.length);
  }
  return true;
}

// Without quotes around it, a dash before a first letter, and full stops at the end.
std::string_view stripped(std::string_view word) {
  while (word.starts_with('\'')) word.remove_prefix(1);
  while (word.ends_with('\'') || word.ends_with('.')) word.remove_suffix(1);
  if (word.empty()) return word;
  const Utf8Character first = firstCharacter(word);
  const bool isBullet = first.code && isOneOf(*first.code, dashes);
  if (isBullet && isLetter(charAt(word, first.length))) word.remove_prefix(first.length);
  return word;
}

// Collects words and what was between them.
class Splitter {
 public:
  void separate(Separator separator) {
    next_.startsLine |= separator == Separator::line;
    next_.isJoined |= separator == Separator::joint;
    next_.startsPhrase |= separator == Separator::line || separator == Separator::phrase;
  }

  void add(std::string_view word) {
    if (isDecoration(word)) {
      const bool isDash = isOneOf(firstCharacter(word).code.value_or(0), dashes);
      next_.followsDash |= isDash;
      next_.startsPhrase |= !isDash;
      return;
    }
    next_.text = stripped(word);
    words_.push_back(next_);
    next_ = {};
    if (word.ends_with('.')) separate(Separator::phrase);
  }

  std::vector<TextWord> take() { return std::move(words_); }

 private:
  std::vector<TextWord> words_;
  TextWord next_{{}, true, true};
};

}  // namespace

std::vector<TextWord> textWords(std::string_view text) {
  Splitter splitter;
  std::size_t begin = 0;  // of the current word
  for (std::size_t index = 0; index < text.size();) {
    const Utf8Character character = firstCharacter(text.substr(index));
    const Separator separator = separatorAt(text, index, character);
    const std::size_t next = index + character.length;
    if (separator != Separator::none) {
      if (begin < index) splitter.add(text.substr(begin, index - begin));
      splitter.separate(separator);
      begin = next;
    }
    index = next;
  }
  if (begin < text.size()) splitter.add(text.substr(begin));
  return splitter.take();
}

}  // namespace quorvane
