#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quorvane {

struct Utf8Character {
  std::optional<char32_t> code;  // none for an invalid byte
  std::size_t length = 1;        // in bytes
};

// Decodes the first character of a text, which must not be empty. Overlong forms, surrogates,
// truncated characters and code points above U+10FFFF are invalid.
Utf8Character firstCharacter(std::string_view text);

bool isUtf8(std::string_view text);

}  // namespace quorvane
