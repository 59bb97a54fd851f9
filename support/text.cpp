#include "support/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace quorvane {
namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// The length of the control character that the text begins with; 0 when it begins with another.
std::size_t controlLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
  // A second block of them is encoded as C2 80 to C2 9F.
  return text.size() > 1 && byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) <= 0x9F ? 2 : 0;
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

std::string counted(std::size_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string oneLine(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::size_t control = controlLength(text);
    result += control > 0 ? ' ' : text.front();
    text.remove_prefix(std::max<std::size_t>(control, 1));
  }
  return result;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return parseWhole<std::int64_t>(text, 10);
}

std::optional<std::uint32_t> parseHexNumber(std::string_view text) {
  if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
    text.remove_prefix(2);
  }
  return parseWhole<std::uint32_t>(text, 16);
}

}  // namespace quorvane
