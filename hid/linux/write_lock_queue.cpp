#include "hid/linux/write_lock_queue.h"

#include <fcntl.h>

#include <cerrno>
#include <optional>

namespace quorvane {
namespace {

// The bytes to lock. A waiter enters at the end and moves to the byte before it as soon as that is
// free: first in, first out.
constexpr int writeLock = 0;
constexpr int presence = 1;  // shared by all
constexpr int firstInLine = 2;
constexpr int endOfLine = 9;
constexpr int nowhere = endOfLine + 1;

int placeBefore(int place) { return place == firstInLine ? writeLock : place - 1; }

struct flock lockOn(int byte, int type) {
  struct flock lock {};
  lock.l_type = static_cast<short>(type);
  lock.l_whence = SEEK_SET;
  lock.l_start = byte;
  lock.l_len = 1;
  return lock;
}

// Calls fcntl(), and retries on EINTR.
int ask(int node, int command, struct flock& lock) {
  int answer = 0;
  do {
    answer = ::fcntl(node, command, &lock);
  } while (answer < 0 && errno == EINTR);
  return answer;
}

// Whether the byte could be locked; none if the file system has no locks.
std::optional<bool> lockByte(int node, int byte, int type) {
  struct flock lock = lockOn(byte, type);
  if (ask(node, F_OFD_SETLK, lock) == 0) return true;
  if (errno == EAGAIN || errno == EACCES) return false;
  return std::nullopt;
}

}  // namespace

WriteLockQueue::WriteLockQueue(int node)
    : node_(node), place_(nowhere), canLock_(lockByte(node_, presence, F_RDLCK).has_value()) {}

bool WriteLockQueue::tryLock() {
  while (place_ != writeLock) {
    const int next = placeBefore(place_);
    const auto locked = lockByte(node_, next, F_WRLCK);
    canLock_ = locked.has_value();
    if (!locked) return true;
    if (!*locked) return false;
    leave();
    place_ = next;
  }
  return true;
}

void WriteLockQueue::leave() {
  if (place_ != nowhere) lockByte(node_, place_, F_UNLCK);
  place_ = nowhere;
}

bool WriteLockQueue::areOthersThere() const {
  struct flock other = lockOn(presence, F_WRLCK);
  return !canLock_ || ask(node_, F_OFD_GETLK, other) != 0 || other.l_type != F_UNLCK;
}

}  // namespace quorvane
