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

// A byte range of a file. A length of 0 means up to the end, also when the file grows.
struct FileRange {
  std::int64_t start = 0;
  std::int64_t length = 0;
};

// Takes an exclusive open-file-description lock without waiting. The lock lasts until unlockFile()
// or until the last duplicate of the file descriptor is closed, so a process that dies releases it.
// The file descriptor must be open for writing.
FileLockResult tryLockFile(const UniqueFd& fd, FileRange range = {});

void unlockFile(const UniqueFd& fd, FileRange range = {});

}  // namespace quorvane
