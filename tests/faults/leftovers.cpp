#include "tests/faults/leftovers.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/support/process_facts.h"

namespace quorvane {
namespace {

constexpr int mostLooks = 1'000'000;

// A sanitizer starts a thread of its own along with the first one.
std::size_t threadsNow() {
  std::thread([] {}).join();
  return threadCount();
}

}  // namespace

NoLeftovers::NoLeftovers() : threads_(threadsNow()), descriptors_(descriptorCount()) {}

NoLeftovers::~NoLeftovers() {
  for (int look = 0; look < mostLooks && threadCount() > threads_; ++look) {
    std::this_thread::yield();
  }
  EXPECT_LE(threadCount(), threads_) << "a thread was left behind";
  EXPECT_LE(descriptorCount(), descriptors_) << "a descriptor was left open";
}

}  // namespace quorvane
