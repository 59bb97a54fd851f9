#pragma once

#include "support/unique_fd.h"

namespace quorvane {

enum class FileLockResult {
  locked,
  heldByOther,
  unsupported,  // by the file system
  failed,       // errno says why
};

// Takes an exclusive open-file-description lock on the whole file without waiting. It lasts until
// the last copy of the descriptor is closed, so it ends with its process. Needs a descriptor that
// can be written to.
FileLockResult tryLockFile(const UniqueFd& fd);

}  // namespace quorvane
