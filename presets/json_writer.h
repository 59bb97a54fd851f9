#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Writes one JSON document in the form that all our files have: two spaces for each level, a space
// on each side of a colon, one member a line, keys in the order of their bytes, "/" as "\/", no
// line feed at the end. Texts stay UTF-8; what is not UTF-8 in them becomes U+FFFD.
//
// Calls follow the document from its begin to its end; a call out of place, or a key out of order,
// stops the program.
class JSONWriter {
 public:
  void beginObject();
  void endObject();
  void beginArray();
  void endArray();
  void key(std::string_view key);  // of the value that follows
  void string(std::string_view value);
  void integer(std::int64_t value);
  void boolean(bool value);

  // The document, once it is complete.
  std::string take();

 private:
  struct Level {
    bool isObject;
    bool isEmpty = true;
    bool hasKey = false;  // whose value is still to come
    std::string lastKey;
  };

  void beginValue();
  void begin(bool isObject, char bracket);
  void end(bool isObject, char bracket);
  void beginLine(Level& level);
  void quote(std::string_view text);

  std::string text_;
  std::vector<Level> levels_;
};

}  // namespace quorvane
