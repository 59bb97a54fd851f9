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
  constexpr std::chrono::milliseconds forever{-1};
  return waitReadable(fd, stop, forever).value();
}

std::optional<bool> waitReadable(int fd, int stop, std::chrono::milliseconds limit) {
  std::array<pollfd, 2> watched{{{fd, POLLIN, 0}, {stop, POLLIN, 0}}};
  for (;;) {
    const int ready = ::poll(watched.data(), watched.size(), static_cast<int>(limit.count()));
    if (ready == 0) return std::nullopt;
    if (ready > 0) return watched[1].revents == 0;
    invariant(errno == EINTR, "poll refused its descriptors");
  }
}

bool waitReadable(int fd, std::chrono::milliseconds limit) {
  pollfd watched{fd, POLLIN, 0};
  const int ready = ::poll(&watched, 1, static_cast<int>(limit.count()));
  invariant(ready >= 0 || errno == EINTR, "poll refused its descriptor");
  return ready > 0;
}

}  // namespace quorvane
