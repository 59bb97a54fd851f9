#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "presets/json_reader.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {

// Decodes a text. None if it throws DecodingError, whose message must be one non-empty line. Any
// other exception is a failure of the property.
template <typename Decode>
auto decodedOrRefused(const std::string& text, Decode decode)
    -> std::optional<decltype(decode(JSONValue()))> {
  try {
    return decode(parseJSON(text));
  } catch (const DecodingError& error) {
    const std::string_view reason = error.what();
    invariant(!reason.empty(), "a refusal says why");
    invariant(reason.find('\n') == std::string_view::npos, "a refusal is one line");
    return std::nullopt;
  }
}

}  // namespace quorvane::Fuzz
