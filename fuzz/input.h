#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "support/bytes.h"

namespace quorvane::Fuzz {

// Consumes the bytes of an input from the front. At its end byte() returns 0.
class Input {
 public:
  explicit Input(ByteView bytes) : rest_(bytes) {}

  bool atEnd() const { return rest_.empty(); }
  std::uint8_t byte();

  // The next `count` bytes, or fewer at the end of the input.
  ByteView bytes(std::size_t count);

  // The bytes before the next `end`, or all if there is none; skips `end` itself.
  ByteView until(std::uint8_t end);

  ByteView rest() const { return rest_; }

 private:
  ByteView rest_;
};

std::string textOf(ByteView bytes);

}  // namespace quorvane::Fuzz
