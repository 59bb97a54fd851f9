#include "presets/json_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr std::size_t indentation = 2;

bool isPlain(char c) { return c >= ' ' && c < '\x7f' && c != '"' && c != '\\' && c != '/'; }

}  // namespace

void JSONWriter::beginObject() { begin(true, '{'); }
void JSONWriter::endObject() { end(true, '}'); }
void JSONWriter::beginArray() { begin(false, '['); }
void JSONWriter::endArray() { end(false, ']'); }

void JSONWriter::key(std::string_view key) {
  invariant(!levels_.empty() && levels_.back().isObject && !levels_.back().hasKey,
            "a JSON key stands in an object, before a value");
  Level& level = levels_.back();
  invariant(level.isEmpty || level.lastKey < key, "JSON keys come in the order of their bytes");
  beginLine(level);
  quote(key);
  text_ += " : ";
  level.lastKey = key;
  level.hasKey = true;
}

void JSONWriter::string(std::string_view value) {
  beginValue();
  quote(value);
}

void JSONWriter::integer(std::int64_t value) {
  beginValue();
  fmt::format_to(std::back_inserter(text_), "{}", value);
}

void JSONWriter::boolean(bool value) {
  beginValue();
  text_ += value ? "true" : "false";
}

std::string JSONWriter::take() {
  invariant(levels_.empty() && !text_.empty(), "a JSON document is complete when it is taken");
  return std::exchange(text_, {});
}

void JSONWriter::beginValue() {
  if (levels_.empty()) {
    invariant(text_.empty(), "a JSON document is one value");
    return;
  }
  Level& level = levels_.back();
  if (level.isObject) {
    invariant(level.hasKey, "a JSON value in an object has a key");
    level.hasKey = false;
  } else {
    beginLine(level);
  }
}

void JSONWriter::begin(bool isObject, char bracket) {
  beginValue();
  text_ += bracket;
  levels_.push_back({isObject, true, false, {}});
}

void JSONWriter::end(bool isObject, char bracket) {
  invariant(!levels_.empty() && levels_.back().isObject == isObject && !levels_.back().hasKey,
            "JSON brackets come in pairs");
  const bool isEmpty = levels_.back().isEmpty;
  levels_.pop_back();
  if (!isEmpty) {
    text_ += '\n';
    text_.append(levels_.size() * indentation, ' ');
  }
  text_ += bracket;
}

void JSONWriter::beginLine(Level& level) {
  if (!level.isEmpty) text_ += ',';
  level.isEmpty = false;
  text_ += '\n';
  text_.append(levels_.size() * indentation, ' ');
}

void JSONWriter::quote(std::string_view text) {
  if (std::all_of(text.begin(), text.end(), isPlain)) {
    text_ += '"';
    text_ += text;
    text_ += '"';
    return;
  }
  using Json = nlohmann::json;
  for (const char c : Json(text).dump(-1, ' ', false, Json::error_handler_t::replace)) {
    if (c == '/') text_ += '\\';
    text_ += c;
  }
}

}  // namespace quorvane
