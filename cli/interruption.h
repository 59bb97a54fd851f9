#pragma once

#include "support/unique_fd.h"

namespace quorvane {

// Ctrl-C (SIGINT) and SIGTERM as a request that a command polls. While an instance exists, the
// signals do not end the program. Call catchSignals() before other threads start.
class Interruption {
 public:
  static Interruption catchSignals();

  // An interruption is requested once the file descriptor is readable.
  explicit Interruption(UniqueFd fd) : fd_(std::move(fd)) {}

  int fd() const { return fd_.get(); }
  bool requested() const;

 private:
  UniqueFd fd_;
};

}  // namespace quorvane
