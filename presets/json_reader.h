#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

#include "presets/decoding_error.h"

namespace quorvane {

using JSONValue = nlohmann::json;

// The limit of nesting; our own documents have at most four levels.
inline constexpr int deepestJSON = 64;

// Parses one JSON document (RFC 8259; a leading byte order mark is skipped). When a key occurs
// twice in an object, the last value counts. Throws DecodingError.
JSONValue parseJSON(std::string_view text);

// Empties a document of parseJSON(). Call it before the destructor: the library's destructor
// allocates memory for a document that is not empty, and ends the program when that fails.
void dismantle(JSONValue& json);

}  // namespace quorvane
