#pragma once

#include "support/unique_fd.h"

namespace quorvane {

// Ctrl-C (and SIGTERM) as a request that a command looks for at a moment of its choosing. While one
// exists the signals do not end the program; they must be caught before other threads start.
class Interruption {
 public:
  static Interruption catchSignals();

  // Requested when the descriptor becomes readable.
  explicit Interruption(UniqueFd fd) : fd_(std::move(fd)) {}

  int fd() const { return fd_.get(); }
  bool requested() const;

 private:
  UniqueFd fd_;
};

}  // namespace quorvane
