#include "tests/faults/leftovers.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <mutex>
#include <string>
#include <thread>

#include "tests/support/process_facts.h"

namespace quorvane {
namespace {

constexpr int mostLooks = 1'000'000;

// A sanitizer may start a permanent thread of its own with the first thread of the program.
void makeFirstThread() {
  std::string entry;
  std::thread([&] { entry = "/proc/self/task/" + std::to_string(::gettid()); }).join();
  while (std::filesystem::exists(entry)) std::this_thread::yield();
}

std::size_t threadsBefore() {
  static std::once_flag once;
  std::call_once(once, makeFirstThread);
  return threadCount();
}

}  // namespace

NoLeftovers::NoLeftovers() : threads_(threadsBefore()), descriptors_(descriptorCount()) {}

NoLeftovers::~NoLeftovers() {
  for (int look = 0; look < mostLooks && threadCount() > threads_; ++look) {
    std::this_thread::yield();
  }
  EXPECT_LE(threadCount(), threads_) << "a thread was left behind";
  EXPECT_LE(descriptorCount(), descriptors_) << "a descriptor was left open";
}

}  // namespace quorvane
