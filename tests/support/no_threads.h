#pragma once

#include <pthread.h>

#include <cstddef>

namespace quorvane {

// RAII: no thread can be started while it lives, because the default stack size exceeds any address
// space.
class NoThreads {
 public:
  NoThreads() {
    ::pthread_getattr_default_np(&before_);
    pthread_attr_t huge{};
    ::pthread_attr_init(&huge);
    ::pthread_attr_setstacksize(&huge, std::size_t{1} << 47U);
    ::pthread_setattr_default_np(&huge);
    ::pthread_attr_destroy(&huge);
  }
  ~NoThreads() {
    ::pthread_setattr_default_np(&before_);
    ::pthread_attr_destroy(&before_);
  }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;

 private:
  pthread_attr_t before_{};
};

inline constexpr const char* noThreadText =
    "no thread could be started: Resource temporarily unavailable";

}  // namespace quorvane
