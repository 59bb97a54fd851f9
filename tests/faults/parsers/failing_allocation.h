#pragma once

#include <cstddef>

namespace quorvane {

// While it lives, the n-th allocation of this thread fails, n from 1; 0: none fails. At most one
// instance per thread at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t number);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  // Whether the allocation failed, for the last instance in this thread.
  static bool happened();
};

// How many allocations of this thread are not freed yet.
std::ptrdiff_t liveAllocations();

}  // namespace quorvane
