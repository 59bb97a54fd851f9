#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "support/bytes.h"

namespace quorvane::Fuzz {

// Cuts an input into pieces from its front. Beyond its end there are zeros.
class Input {
 public:
  explicit Input(ByteView bytes) : rest_(bytes) {}

  bool atEnd() const { return rest_.empty(); }
  std::uint8_t byte();

  // As many bytes as there are, at most `count`.
  ByteView bytes(std::size_t count);

  // What stands before the next `end`, or everything; `end` itself is dropped.
  ByteView until(std::uint8_t end);

  ByteView rest() const { return rest_; }

 private:
  ByteView rest_;
};

std::string textOf(ByteView bytes);

}  // namespace quorvane::Fuzz
