#include "support/thread.h"

#include <pthread.h>

#include <system_error>
#include <utility>

namespace quorvane {
namespace {

constexpr std::size_t kernelNameLength = 15;

std::thread started(const std::string& name, std::function<void()> body) {
  try {
    return std::thread([kernelName = name.substr(0, kernelNameLength), body = std::move(body)] {
      pthread_setname_np(pthread_self(), kernelName.c_str());
      body();
    });
  } catch (const std::system_error& error) {
    throw std::system_error(error.code(), "no thread could be started");
  }
}

}  // namespace

Thread::Thread(std::string name, std::function<void()> body)
    : name_(std::move(name)), thread_(started(name_, std::move(body))) {}

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
