#include "support/file_lock.h"

#include <fcntl.h>

#include <cerrno>

#include "support/file_system.h"

namespace quorvane {

namespace {

int setLock(const UniqueFd& fd, int type, FileRange range) {
  struct flock lock {};
  lock.l_type = static_cast<short>(type);
  lock.l_whence = SEEK_SET;
  lock.l_start = range.start;
  lock.l_len = range.length;
  return retrying([&] { return ::fcntl(fd.get(), F_OFD_SETLK, &lock); });
}

}  // namespace

FileLockResult tryLockFile(const UniqueFd& fd, FileRange range) {
  if (setLock(fd, F_WRLCK, range) == 0) return FileLockResult::locked;
  switch (errno) {
    case EAGAIN:
      return FileLockResult::heldByOther;
    case EINVAL:
    case ENOLCK:
    case ENOSYS:
    case EOPNOTSUPP:
      return FileLockResult::unsupported;
    default:
      return FileLockResult::failed;
  }
}

void unlockFile(const UniqueFd& fd, FileRange range) { setLock(fd, F_UNLCK, range); }

}  // namespace quorvane
