#pragma once

#include <chrono>
#include <optional>

#include "support/unique_fd.h"

namespace quorvane {

// A flag with a file descriptor that poll() reports as readable while the flag is set. It stays set
// until it is cleared. Any thread may set it.
class EventFd {
 public:
  // Throws std::system_error when the process has no file descriptor left.
  EventFd();

  int fd() const { return fd_.get(); }
  void set();
  void clear();

 private:
  UniqueFd fd_;
};

// Blocks until one of two file descriptors is readable or in error. False when `stop` is, even if
// `fd` is too; else true.
bool waitReadable(int fd, int stop);

// The same within a limit; none when it passes first. After a signal handler the limit begins anew.
std::optional<bool> waitReadable(int fd, int stop, std::chrono::milliseconds limit);

// Blocks until a file descriptor is readable or in error; false when `limit` passes first, or when
// a signal handler interrupts the wait.
bool waitReadable(int fd, std::chrono::milliseconds limit);

}  // namespace quorvane
