#pragma once

#include <cstdint>

#include "support/unique_fd.h"

namespace quorvane {

enum class FileLockResult {
  locked,
  heldByOther,
  unsupported,  // by the file system
  failed,       // errno says why
};

// Bytes of a file; a length of 0 reaches to the end, wherever that is.
struct FileRange {
  std::int64_t start = 0;
  std::int64_t length = 0;
};

// Takes an exclusive open-file-description lock without waiting. It lasts until the last copy of
// the descriptor is closed, so it ends with its process. Needs a descriptor that can be written to.
FileLockResult tryLockFile(const UniqueFd& fd, FileRange range = {});

void unlockFile(const UniqueFd& fd, FileRange range = {});

}  // namespace quorvane
