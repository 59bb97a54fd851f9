#pragma once

#include <functional>
#include <string>
#include <thread>

namespace quorvane {

// A named thread, joined on destruction and on assignment. The owner must first make the body end,
// for example by a stop flag that wakes it.
//
// When the thread itself destroys or assigns this object, it is detached instead: the body must
// then own everything that it still uses.
class Thread {
 public:
  Thread() = default;
  // The kernel shows the first 15 bytes of the name; name() returns all of it. Throws
  // std::system_error, with a message for people, when no thread can be started.
  Thread(std::string name, std::function<void()> body);
  ~Thread();
  Thread(Thread&&) = default;
  Thread& operator=(Thread&& other) noexcept;
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;

  const std::string& name() const { return name_; }

  // Whether there is a thread that was not joined or detached yet.
  bool joinable() const { return thread_.joinable(); }

  // Waits until the body has ended. Called from the body, it detaches the thread instead.
  void join();

 private:
  std::string name_;
  std::thread thread_;
};

}  // namespace quorvane
