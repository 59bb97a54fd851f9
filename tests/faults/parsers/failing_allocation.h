#pragma once

#include <cstddef>

namespace quorvane {

// While it lives, one allocation of this thread fails: the one with this number, counted from 1.
// One at a time in a thread.
class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t number);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  // Whether there were that many, of the last one in this thread.
  static bool happened();
};

// The allocations of this thread that it has not freed.
std::ptrdiff_t liveAllocations();

}  // namespace quorvane
