#include "fuzz/input.h"

#include <algorithm>

namespace quorvane::Fuzz {

std::uint8_t Input::byte() {
  const ByteView one = bytes(1);
  return one.empty() ? std::uint8_t{0} : one.front();
}

ByteView Input::bytes(std::size_t count) {
  const ByteView taken = rest_.first(std::min(count, rest_.size()));
  rest_ = rest_.subspan(taken.size());
  return taken;
}

ByteView Input::until(std::uint8_t end) {
  const auto found = std::find(rest_.begin(), rest_.end(), end);
  const ByteView taken = bytes(static_cast<std::size_t>(found - rest_.begin()));
  bytes(1);
  return taken;
}

std::string textOf(ByteView bytes) { return {bytes.begin(), bytes.end()}; }

}  // namespace quorvane::Fuzz
