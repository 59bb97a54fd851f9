#include "support/thread.h"

#include <pthread.h>

#include <utility>

namespace quorvane {
namespace {

constexpr std::size_t kernelNameLength = 15;

}  // namespace

Thread::Thread(std::string name, std::function<void()> body)
    : name_(std::move(name)),
      thread_([kernelName = name_.substr(0, kernelNameLength), body = std::move(body)] {
        pthread_setname_np(pthread_self(), kernelName.c_str());
        body();
      }) {}

Thread::~Thread() { join(); }

Thread& Thread::operator=(Thread&& other) noexcept {
  join();
  name_ = std::move(other.name_);
  thread_ = std::move(other.thread_);
  return *this;
}

void Thread::join() {
  if (!thread_.joinable()) return;
  if (thread_.get_id() == std::this_thread::get_id()) {
    thread_.detach();
  } else {
    thread_.join();
  }
}

}  // namespace quorvane
