#include "simulator/transcript.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace quorvane {

void Transcript::add(std::string line) {
  MutexLock held(lock_);
  lines_.push_back(std::move(line));
  grown_.notifyAll();
}

std::vector<std::string> Transcript::lines() const {
  MutexLock held(lock_);
  return lines_;
}

void Transcript::clear() {
  MutexLock held(lock_);
  lines_.clear();
}

void Transcript::waitForLines(std::size_t count) {
  MutexLock held(lock_);
  while (lines_.size() < count) grown_.wait(lock_);
}

std::string packetText(ByteView wire) {
  const auto last = std::find_if(wire.rbegin(), wire.rend(), [](auto byte) { return byte != 0; });
  const auto shown = static_cast<std::size_t>(wire.rend() - last);
  std::string text = hexDump(wire.first(shown));
  if (shown < wire.size()) text += fmt::format(" +{}", wire.size() - shown);
  return text;
}

}  // namespace quorvane
