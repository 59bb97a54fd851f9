#include "support/utf8.h"

#include <algorithm>
#include <array>

namespace quorvane {
namespace {

// The forms of a character by its first byte: (byte & mask) == lead.
struct Utf8Form {
  unsigned char mask;
  unsigned char lead;
  std::size_t length;
  char32_t smallest;  // a smaller code is overlong in this form
};

constexpr std::array<Utf8Form, 4> utf8Forms{
    {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

bool isCodePoint(char32_t code) { return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF); }

}  // namespace

Utf8Character firstCharacter(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto* const form =
      std::find_if(utf8Forms.begin(), utf8Forms.end(),
                   [&](const Utf8Form& one) { return (byte(0) & one.mask) == one.lead; });
  if (form == utf8Forms.end() || text.size() < form->length) return {};
  char32_t code = byte(0) & static_cast<unsigned char>(~form->mask);
  for (std::size_t i = 1; i < form->length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {};
    code = code << 6 | (byte(i) & 0x3F);
  }
  if (code < form->smallest || !isCodePoint(code)) return {};
  return {code, form->length};
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character character = firstCharacter(text);
    if (!character.code) return false;
    text.remove_prefix(character.length);
  }
  return true;
}

}  // namespace quorvane
