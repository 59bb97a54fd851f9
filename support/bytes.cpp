#include "support/bytes.h"

#include <cstddef>

namespace quorvane {
namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

int digitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Appends the bytes of one group (text between spaces); false when the group is malformed.
bool appendGroup(std::string_view group, Bytes& out) {
  if (group.size() > 2 && group[0] == '0' && (group[1] == 'x' || group[1] == 'X')) {
    group.remove_prefix(2);
  }
  if (group.size() != 1 && group.size() % 2 != 0) return false;
  const std::size_t width = group.size() == 1 ? 1 : 2;
  for (std::size_t i = 0; i < group.size(); i += width) {
    int value = 0;
    for (const char c : group.substr(i, width)) {
      const int digit = digitValue(c);
      if (digit < 0) return false;
      value = value * 16 + digit;
    }
    out.push_back(static_cast<std::uint8_t>(value));
  }
  return true;
}

}  // namespace

std::string hexDump(ByteView bytes) {
  std::string text;
  text.reserve(bytes.size() * 3);
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text.push_back(' ');
    text.push_back(hexDigits[byte >> 4U]);
    text.push_back(hexDigits[byte & 0x0FU]);
  }
  return text;
}

std::optional<Bytes> parseHexBytes(std::string_view text) {
  Bytes bytes;
  std::size_t i = 0;
  while (i < text.size()) {
    if (isSpace(text[i])) {
      ++i;
      continue;
    }
    std::size_t end = i;
    while (end < text.size() && !isSpace(text[end])) ++end;
    if (!appendGroup(text.substr(i, end - i), bytes)) return std::nullopt;
    i = end;
  }
  if (bytes.empty()) return std::nullopt;
  return bytes;
}

}  // namespace quorvane
