#include "hid/linux/write_line.h"

#include <fcntl.h>

#include <cerrno>
#include <optional>

namespace quorvane {
namespace {

// The bytes that are locked. Who waits comes in at the end and goes on to the byte before as soon
// as that is free, so that nobody overtakes.
constexpr int turn = 0;
constexpr int presence = 1;  // shared by all
constexpr int firstInLine = 2;
constexpr int endOfLine = 9;
constexpr int nowhere = endOfLine + 1;

int placeBefore(int place) { return place == firstInLine ? turn : place - 1; }

struct flock lockOn(int byte, int type) {
  struct flock lock {};
  lock.l_type = static_cast<short>(type);
  lock.l_whence = SEEK_SET;
  lock.l_start = byte;
  lock.l_len = 1;
  return lock;
}

// A signal that comes in between is no answer.
int ask(int node, int command, struct flock& lock) {
  int answer = 0;
  do {
    answer = ::fcntl(node, command, &lock);
  } while (answer < 0 && errno == EINTR);
  return answer;
}

// None when the lock cannot be had at all.
std::optional<bool> tryLock(int node, int byte, int type) {
  struct flock lock = lockOn(byte, type);
  if (ask(node, F_OFD_SETLK, lock) == 0) return true;
  if (errno == EAGAIN || errno == EACCES) return false;
  return std::nullopt;
}

}  // namespace

WriteLine::WriteLine(int node)
    : node_(node), place_(nowhere), canLock_(tryLock(node_, presence, F_RDLCK).has_value()) {}

bool WriteLine::tryTurn() {
  while (place_ != turn) {
    const int next = placeBefore(place_);
    const auto locked = tryLock(node_, next, F_WRLCK);
    canLock_ = locked.has_value();
    if (!locked) return true;
    if (!*locked) return false;
    leave();
    place_ = next;
  }
  return true;
}

void WriteLine::leave() {
  if (place_ != nowhere) tryLock(node_, place_, F_UNLCK);
  place_ = nowhere;
}

bool WriteLine::areOthersThere() const {
  struct flock other = lockOn(presence, F_WRLCK);
  return !canLock_ || ask(node_, F_OFD_GETLK, other) != 0 || other.l_type != F_UNLCK;
}

}  // namespace quorvane
