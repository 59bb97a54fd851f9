#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

// Another program that has a device open.
struct NodeHolder {
  std::int64_t process = 0;
  std::string program;       // empty: unknown
  bool isExclusive = false;  // keeps others out
  bool hasWriteLock = false;
  bool isStopped = false;  // suspended, for example by SIGSTOP or a debugger

  bool operator==(const NodeHolder&) const = default;
};

// "game (process 200)"
std::string nameOf(const NodeHolder& holder);

}  // namespace quorvane
