#include "presets/json_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

namespace quorvane {
namespace {

// How deep the brackets of a document go, whether it is well-formed or not.
int nestingDepth(std::string_view text) {
  int depth = 0;
  int deepest = 0;
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (inString) {
      if (c == '\\') ++i;
      if (c == '"') inString = false;
    } else if (c == '"') {
      inString = true;
    } else if (c == '[' || c == '{') {
      deepest = std::max(deepest, ++depth);
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
  return deepest;
}

// Of the byte at an index, which may be the end of the text.
std::string place(std::string_view text, std::size_t index) {
  const std::string_view before = text.substr(0, index);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t lineStart = before.rfind('\n') + 1;  // 0 on the first line
  return fmt::format("line {}, column {}", line, before.size() - lineStart + 1);
}

// The library's own words without its numbers and without bytes of the text.
std::string reason(std::string_view what) {
  if (const auto begin = what.find(" - "); begin != std::string_view::npos) {
    what.remove_prefix(begin + 3);
  }
  return std::string(what.substr(0, what.find("; last read")));
}

}  // namespace

JSONValue parseJSON(std::string_view text) {
  if (nestingDepth(text) > deepestJSON) {
    throw DecodingError(fmt::format("Not a settings file: nested deeper than {}", deepestJSON));
  }
  // Between values the library takes one for the end of the text.
  if (const std::size_t index = text.find('\0'); index != std::string_view::npos) {
    throw DecodingError(fmt::format("Not valid JSON at {}: zero byte", place(text, index)));
  }
  try {
    return JSONValue::parse(text);
  } catch (const JSONValue::parse_error& error) {  // which counts bytes from 1
    throw DecodingError(
        fmt::format("Not valid JSON at {}: {}", place(text, error.byte - 1), reason(error.what())));
  } catch (const JSONValue::out_of_range&) {
    throw DecodingError("Not valid JSON: a number is too large");
  }
}

}  // namespace quorvane
