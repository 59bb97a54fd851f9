#include "support/file_lock.h"

#include <fcntl.h>

#include <cerrno>

#include "support/file_system.h"

namespace quorvane {

FileLockResult tryLockFile(const UniqueFd& fd) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  if (retrying([&] { return ::fcntl(fd.get(), F_OFD_SETLK, &lock); }) == 0) {
    return FileLockResult::locked;
  }
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

}  // namespace quorvane
