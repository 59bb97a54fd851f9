#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

#include "presets/decoding_error.h"

namespace quorvane {

using JSONValue = nlohmann::json;

// Deeper documents are refused: our own have four levels.
inline constexpr int deepestJSON = 64;

// Reads one JSON document (RFC 8259; a leading byte order mark is skipped). Of a key that stands
// twice in an object the last value counts. Throws DecodingError.
JSONValue parseJSON(std::string_view text);

// Empties a document of parseJSON. The library's own destructor takes memory for what is not empty,
// and ends the program when there is none.
void dismantle(JSONValue& json);

}  // namespace quorvane
