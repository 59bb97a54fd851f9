#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quorvane {

struct Utf8Character {
  std::optional<char32_t> code;  // none for a byte that is no part of a character
  std::size_t length = 1;        // in bytes
};

// The first character of a text that is not empty. Overlong forms, surrogates, cut characters and
// what lies above U+10FFFF are no characters.
Utf8Character firstCharacter(std::string_view text);

bool isUtf8(std::string_view text);

}  // namespace quorvane
