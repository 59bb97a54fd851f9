#include "support/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cwctype>
#include <iterator>

#include "support/utf8.h"

namespace quorvane {
namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

char32_t lowerLetter(char32_t code) {
  static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode != nullptr) return static_cast<char32_t>(::towlower_l(code, unicode));
  return code >= U'A' && code <= U'Z' ? code - U'A' + U'a' : code;
}

constexpr unsigned char lastAscii = 0x7F;
constexpr char32_t firstInvalidByte = 0x110000;  // above every code point

constexpr std::string_view replacementCharacter = "\uFFFD";

struct CodeRange {
  char32_t first;
  char32_t last;
};

constexpr std::array<CodeRange, 7> controls{{{0x00, 0x1F},
                                             {0x7F, 0x9F},
                                             {0x061C, 0x061C},    // Arabic letter mark
                                             {0x200E, 0x200F},    // direction marks
                                             {0x2028, 0x2029},    // line, paragraph separator
                                             {0x202A, 0x202E},    // embeddings and overrides
                                             {0x2066, 0x2069}}};  // isolates

std::string withoutControls(std::string_view text, bool keepLines) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (!next.code) {
      result += replacementCharacter;
    } else if (isControl(*next.code) && !(keepLines && *next.code == U'\n')) {
      result += ' ';
    } else {
      result += text.substr(0, next.length);
    }
    text.remove_prefix(next.length);
  }
  return result;
}

template <typename Integer>
std::optional<Integer> parseWhole(std::string_view text, int base) {
  Integer value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

}  // namespace

std::string lowerCase(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::transform(text.begin(), text.end(), std::back_inserter(result), lower);
  return result;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower(x) == lower(y); });
}

bool startsWithIgnoringCase(std::string_view text, std::string_view beginning) {
  return equalIgnoringCase(text.substr(0, beginning.size()), beginning);
}

std::u32string foldedCase(std::string_view text) {
  std::u32string result(text.size(), U'\0');
  std::size_t length = 0;
  while (!text.empty()) {
    const auto first = static_cast<unsigned char>(text.front());
    const bool isAscii = first <= lastAscii;
    const Utf8Character next = isAscii
                                   ? Utf8Character{static_cast<unsigned char>(lower(text.front()))}
                                   : firstCharacter(text);
    const char32_t code = next.code.value_or(firstInvalidByte + first);
    result[length++] = isAscii || !next.code ? code : lowerLetter(code);
    text.remove_prefix(next.length);
  }
  result.resize(length);
  return result;
}

std::string counted(std::size_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

bool isControl(char32_t character) {
  return std::any_of(controls.begin(), controls.end(), [&](const CodeRange& range) {
    return range.first <= character && character <= range.last;
  });
}

std::string oneLine(std::string_view text) { return withoutControls(text, false); }

std::string safeLines(std::string_view text) { return withoutControls(text, true); }

std::optional<std::int64_t> parseInteger(std::string_view text) {
  return parseWhole<std::int64_t>(text, 10);
}

std::optional<std::uint32_t> parseHexNumber(std::string_view text) {
  if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
    text.remove_prefix(2);
  }
  return parseWhole<std::uint32_t>(text, 16);
}

}  // namespace quorvane
