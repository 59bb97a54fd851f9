#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace quorvane {

inline std::size_t entriesOf(const char* directory) {
  const std::filesystem::directory_iterator entries(directory);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

// This process's threads and open descriptors. A joined thread may still be counted for a moment.
inline std::size_t threadCount() { return entriesOf("/proc/self/task"); }
inline std::size_t descriptorCount() { return entriesOf("/proc/self/fd"); }

}  // namespace quorvane
