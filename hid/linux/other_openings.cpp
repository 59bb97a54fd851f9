#include "hid/linux/other_openings.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <utility>

#include "platform/node_holders.h"

namespace quorvane {
namespace {

// Goes through the file descriptor: the path may belong to another node by now.
std::string linkTo(int node) { return "/proc/self/fd/" + std::to_string(node); }

}  // namespace

OtherOpenings::OtherOpenings(int node, Look look)
    : events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), look_(std::move(look)) {
  isWatched_ =
      events_ && ::inotify_add_watch(events_.get(), linkTo(node).c_str(), IN_OPEN | IN_CLOSE) >= 0;
  if (!look_) look_ = [node] { return mayOthersHave(node); };
}

bool OtherOpenings::mayHaveBeenAny() {
  any_ = any_ || !isWatched_ || wasAnybodyThere() || hasAnybodyCome();
  return any_;
}

// Need not run at the start of the watch: a program that closed the node since caused an event.
bool OtherOpenings::wasAnybodyThere() {
  const Look look = std::exchange(look_, nullptr);
  return look && look();
}

bool OtherOpenings::hasAnybodyCome() {
  std::array<char, 4096> buffer{};
  ssize_t length = 0;
  do {
    length = ::read(events_.get(), buffer.data(), buffer.size());
  } while (length < 0 && errno == EINTR);
  return length >= 0 || errno != EAGAIN;
}

}  // namespace quorvane
