#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "presets/json_reader.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {

// What a text decodes to; none when it is refused, in words. Nothing else may be thrown.
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
