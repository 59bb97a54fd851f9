#include "tests/faults/parsers/failing_allocation.h"

#include <cstdlib>
#include <new>

namespace quorvane {
namespace {

struct Allocations {
  std::size_t untilFailure = 0;  // 0: none fails
  bool hasFailed = false;
  std::ptrdiff_t live = 0;
};

thread_local Allocations ofThisThread;

void* allocate(std::size_t size) {
  Allocations& all = ofThisThread;
  if (all.untilFailure > 0 && --all.untilFailure == 0) {
    all.hasFailed = true;
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size > 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  ++all.live;
  return memory;
}

void* allocateOrNull(std::size_t size) noexcept {
  try {
    return allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void release(void* memory) {
  if (memory != nullptr) --ofThisThread.live;
  std::free(memory);
}

}  // namespace

FailingAllocation::FailingAllocation(std::size_t number) {
  ofThisThread.hasFailed = false;
  ofThisThread.untilFailure = number;
}

FailingAllocation::~FailingAllocation() { ofThisThread.untilFailure = 0; }

bool FailingAllocation::happened() { return ofThisThread.hasFailed; }

std::ptrdiff_t liveAllocations() { return ofThisThread.live; }

}  // namespace quorvane

void* operator new(std::size_t size) { return quorvane::allocate(size); }
void* operator new[](std::size_t size) { return quorvane::allocate(size); }
void operator delete(void* memory) noexcept { quorvane::release(memory); }
void operator delete[](void* memory) noexcept { quorvane::release(memory); }
void operator delete(void* memory, std::size_t) noexcept { quorvane::release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { quorvane::release(memory); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return quorvane::allocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return quorvane::allocateOrNull(size);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  quorvane::release(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
  quorvane::release(memory);
}
