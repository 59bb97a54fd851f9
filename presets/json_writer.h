#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Writes one JSON document in the layout of all our files: two spaces of indentation per level, a
// space on each side of a colon, one member per line, keys in byte order, "/" as "\/", no line feed
// at the end. Texts stay UTF-8; invalid bytes become U+FFFD.
//
// Make the calls in document order. A call in the wrong place, or a key out of order, ends the
// program.
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

  // Returns the document, which must be complete.
  std::string take();

 private:
  struct Level {
    bool isObject;
    bool isEmpty = true;
    bool hasKey = false;  // a key was written, but not its value yet
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
