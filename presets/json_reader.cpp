#include "presets/json_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

// The nesting depth of the brackets; the document need not be well-formed.
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

[[noreturn]] void refuseDepth() {
  throw DecodingError(fmt::format("Not a settings file: nested deeper than {}", deepestJSON));
}

// Reports a document that is malformed and nested too deep only as the latter.
[[noreturn]] void refuse(std::string_view text, const std::string& why) {
  if (nestingDepth(text) > deepestJSON) refuseDepth();
  throw DecodingError(why);
}

// Line and column of the byte at an index, which may be the end of the text.
std::string place(std::string_view text, std::size_t index) {
  const std::string_view before = text.substr(0, index);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t lineStart = before.rfind('\n') + 1;  // 0 on the first line
  return fmt::format("line {}, column {}", line, before.size() - lineStart + 1);
}

// The library's message without its error number and without the quoted input.
std::string reason(std::string_view what) {
  if (const auto begin = what.find(" - "); begin != std::string_view::npos) {
    what.remove_prefix(begin + 3);
  }
  return std::string(what.substr(0, what.find("; last read")));
}

// A SAX handler that builds the document. The library's own one destroys a partial document on a
// parse error, before dismantle() could empty it.
class Builder final : public nlohmann::json_sax<JSONValue> {
 public:
  Builder(JSONValue& root, std::string_view text) : root_(root), text_(text) {}

  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(value); }
  bool number_unsigned(number_unsigned_t value) override { return add(value); }
  bool number_float(number_float_t value, const string_t& /*text*/) override { return add(value); }
  bool string(string_t& value) override { return add(std::move(value)); }
  bool binary(binary_t& /*value*/) override { return false; }  // not in JSON

  bool start_object(std::size_t /*size*/) override { return open(JSONValue::object()); }
  bool start_array(std::size_t /*size*/) override { return open(JSONValue::array()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }

  bool key(string_t& key) override {
    member_ = &(*open_.back())[key];
    dismantle(*member_);  // the first value of a repeated key
    return true;
  }

  // Positions count bytes from 1.
  bool parse_error(std::size_t position, const std::string& /*lastToken*/,
                   const nlohmann::detail::exception& error) override {
    if (dynamic_cast<const JSONValue::out_of_range*>(&error) != nullptr) {
      refuse(text_, "Not valid JSON: a number is too large");
    }
    refuse(text_, fmt::format("Not valid JSON at {}: {}", place(text_, position - 1),
                              reason(error.what())));
  }

 private:
  bool add(JSONValue value) {
    put(std::move(value));
    return true;
  }

  bool open(JSONValue empty) {
    if (std::ssize(open_) == deepestJSON) refuseDepth();
    JSONValue& placed = put(std::move(empty));
    open_.push_back(&placed);
    return true;
  }

  bool close() {
    open_.pop_back();
    return true;
  }

  JSONValue& put(JSONValue value) {
    if (open_.empty()) return root_ = std::move(value);
    if (open_.back()->is_object()) return *member_ = std::move(value);
    open_.back()->push_back(std::move(value));
    return open_.back()->back();
  }

  JSONValue& root_;
  const std::string_view text_;
  std::vector<JSONValue*> open_;  // outermost first; only the last one grows: pointers stay valid
  JSONValue* member_ = nullptr;   // where the innermost object's next value goes
};

}  // namespace

JSONValue parseJSON(std::string_view text) {
  // The library takes a zero byte between values for the end of the text.
  if (const std::size_t index = text.find('\0'); index != std::string_view::npos) {
    refuse(text, fmt::format("Not valid JSON at {}: zero byte", place(text, index)));
  }
  // The library's message for this differs between its versions.
  if (text.empty()) {
    throw DecodingError(
        "Not valid JSON at line 1, column 1: unexpected end of input; expected '[', '{', or a "
        "literal");
  }
  JSONValue root;
  try {
    Builder builder(root, text);
    JSONValue::sax_parse(text.begin(), text.end(), &builder);
  } catch (...) {
    dismantle(root);
    throw;
  }
  return root;
}

void dismantle(JSONValue& json) {
  if (!json.is_structured()) return;
  for (JSONValue& element : json) dismantle(element);
  json.clear();
}

}  // namespace quorvane
