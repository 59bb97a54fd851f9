#pragma once

#include <cstddef>

namespace quorvane {

// Expects that while it lives no thread comes into being and no descriptor is opened in this
// process that is still there at its end. Threads that have been joined may take the kernel a
// moment to forget, which is waited for.
class NoLeftovers {
 public:
  NoLeftovers();
  ~NoLeftovers();
  NoLeftovers(const NoLeftovers&) = delete;
  NoLeftovers& operator=(const NoLeftovers&) = delete;

 private:
  const std::size_t threads_;
  const std::size_t descriptors_;
};

}  // namespace quorvane
