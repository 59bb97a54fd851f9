#pragma once

#include <string>
#include <vector>

#include "support/bytes.h"
#include "support/mutex.h"

namespace quorvane {

// A log of a simulated base in lines: packets, pauses, openings and closings. Thread-safe.
class Transcript {
 public:
  void add(std::string line);
  std::vector<std::string> lines() const;
  void clear();

  // Blocks until there are at least this many lines.
  void waitForLines(std::size_t count);

 private:
  mutable Mutex lock_;
  Condition grown_;
  std::vector<std::string> lines_ QUORVANE_GUARDED_BY(lock_);
};

// A packet as text: its bytes up to the last non-zero one, then "+" and the number of zeros that
// follow ("ff 03 02 +61").
std::string packetText(ByteView wire);

}  // namespace quorvane
