#pragma once

#include <functional>
#include <string>
#include <thread>

namespace quorvane {

// A named thread with one owner, which is joined when the owner lets go of it. Whoever owns it must
// first see to it that the body ends (a stop that wakes it).
//
// When the owner is destroyed by the thread itself, the thread is detached instead: the body must
// then own everything that it still touches.
class Thread {
 public:
  Thread() = default;
  // The kernel shows the first 15 bytes of the name; `name()` keeps all of it. Throws
  // std::system_error, with a text for people, when the system has no thread left.
  Thread(std::string name, std::function<void()> body);
  ~Thread();
  Thread(Thread&&) = default;
  Thread& operator=(Thread&& other) noexcept;
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;

  const std::string& name() const { return name_; }

  // Whether there is a body that has not been joined.
  bool joinable() const { return thread_.joinable(); }

  // Waits until the body has ended; called by the body itself, lets it run on by itself.
  void join();

 private:
  std::string name_;
  std::thread thread_;
};

}  // namespace quorvane
