#include "support/event_fd.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

#include "support/invariant.h"

namespace quorvane {

EventFd::EventFd() : fd_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!fd_) throw std::system_error(errno, std::generic_category(), "eventfd");
}

void EventFd::set() {
  const std::uint64_t one = 1;
  // Fails only when the counter is full; the flag is set then anyway.
  [[maybe_unused]] const auto written = ::write(fd_.get(), &one, sizeof one);
}

void EventFd::clear() {
  std::uint64_t count = 0;
  // Fails only when the flag is not set.
  [[maybe_unused]] const auto got = ::read(fd_.get(), &count, sizeof count);
}

bool waitReadable(int fd, int stop) {
  std::array<pollfd, 2> watched{{{fd, POLLIN, 0}, {stop, POLLIN, 0}}};
  for (;;) {
    if (::poll(watched.data(), watched.size(), -1) < 0) {
      invariant(errno == EINTR, "poll refused its descriptors");
      continue;
    }
    if (watched[1].revents != 0) return false;
    if (watched[0].revents != 0) return true;
  }
}

bool waitReadable(int fd, std::chrono::milliseconds limit) {
  pollfd watched{fd, POLLIN, 0};
  const int ready = ::poll(&watched, 1, static_cast<int>(limit.count()));
  invariant(ready >= 0 || errno == EINTR, "poll refused its descriptor");
  return ready > 0;
}

}  // namespace quorvane
