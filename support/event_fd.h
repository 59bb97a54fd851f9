#pragma once

#include <chrono>

#include "support/unique_fd.h"

namespace quorvane {

// A signal that a thread blocked in poll() sees at once. It stays set until it is cleared. Any
// thread may set.
class EventFd {
 public:
  // Throws std::system_error when the process has no descriptor left.
  EventFd();

  int fd() const { return fd_.get(); }
  void set();
  void clear();

 private:
  UniqueFd fd_;
};

// Blocks until one of two descriptors is readable or in error: true when it is the first, false
// when it is (also) the second.
bool waitReadable(int fd, int stop);

// Blocks until a descriptor is readable or in error (true), for at most `limit` (false). A signal
// that the process handles may end the wait early.
bool waitReadable(int fd, std::chrono::milliseconds limit);

}  // namespace quorvane
