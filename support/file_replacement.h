#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "support/file_system.h"
#include "support/unique_fd.h"

namespace quorvane {

// A new file beside the one that it is to replace: write(), finish(), then takePlace() or
// takeName(). Until then it has a temporary name, ".quorvane-PID-N.tmp"; it is removed on
// destruction. All operations block and throw FileError.
//
// The temporary file is locked while this lives, where the file system has locks. A temporary file
// that nobody locks was left by a process that was killed.
class FileReplacement {
 public:
  // Throws also when the file may not be replaced. `file` is no symbolic link.
  explicit FileReplacement(std::filesystem::path file);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  void write(std::string_view content);

  // Gives it the permissions of the file it is to replace, and syncs it; its version from then on.
  FileVersion finish();

  // Replaces the file. When only syncing the directory fails, it is replaced all the same.
  void takePlace();

  // Becomes a further file; false when the name is taken.
  bool takeName(const std::filesystem::path& other);

 private:
  bool create(const std::filesystem::path& name);
  void takeOwnership();
  bool moveTo(const std::filesystem::path& other);

  const std::filesystem::path file_;
  const std::optional<FileStatus> previous_;
  std::filesystem::path name_;  // the temporary one, while it has that
  UniqueFd fd_;
};

// Removes the user's temporary files in a directory whose processes were killed. Leaves what it
// cannot judge, and never fails.
void removeAbandonedReplacements(const std::filesystem::path& directory);

}  // namespace quorvane
