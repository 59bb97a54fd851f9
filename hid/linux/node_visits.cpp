#include "hid/linux/node_visits.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace quorvane {

NodeVisits::NodeVisits(int node) : events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  // By the descriptor, since the path may be another node's by now.
  const std::string path = "/proc/self/fd/" + std::to_string(node);
  areKnown_ = events_ && ::inotify_add_watch(events_.get(), path.c_str(), IN_OPEN | IN_CLOSE) >= 0;
}

bool NodeVisits::anySinceLastAsked() {
  std::array<char, 4096> buffer{};
  while (areKnown_) {
    const ssize_t length = ::read(events_.get(), buffer.data(), buffer.size());
    if (length < 0 && errno == EINTR) continue;
    if (length < 0 && errno == EAGAIN) break;
    areKnown_ = length > 0;
    for (ssize_t at = 0; at < length;) {
      inotify_event event{};
      std::memcpy(&event, buffer.data() + at, sizeof event);
      count(event.mask);
      at += static_cast<ssize_t>(sizeof event + event.len);
    }
  }
  return std::exchange(any_, false) || there_ > 0 || !areKnown_;
}

void NodeVisits::count(unsigned events) {
  if ((events & IN_Q_OVERFLOW) != 0) areKnown_ = false;
  if ((events & (IN_OPEN | IN_CLOSE)) != 0) any_ = true;
  if ((events & IN_OPEN) != 0) ++there_;
  // Somebody may leave who was there before.
  if ((events & IN_CLOSE) != 0) there_ = std::max(there_ - 1, 0);
}

}  // namespace quorvane
