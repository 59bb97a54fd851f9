#pragma once

#include <cstddef>

namespace quorvane {

// RAII check: expects in its destructor that this process has no more threads and open descriptors
// than at its construction. Waits for threads that are joined but still listed by the kernel.
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
