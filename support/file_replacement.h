#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "support/file_system.h"
#include "support/unique_fd.h"

namespace quorvane {

// A temporary file, ".quorvane-PID-N.tmp", in the directory of the file that it is to replace. Call
// write(), finish(), then takePlace() or takeName(); without one of the last two, the destructor
// removes the file. All operations block and throw FileError.
//
// The temporary file is locked for the lifetime of this object, if the file system supports locks.
// So an unlocked temporary file is abandoned: the process that created it was killed.
class FileReplacement {
 public:
  // Throws also when the file may not be replaced. `file` must not be a symbolic link.
  explicit FileReplacement(std::filesystem::path file);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  void write(std::string_view content);

  // Copies the permissions of the file to replace, and syncs the data. Returns the new version.
  FileVersion finish();

  // Replaces the file. When only syncing the directory fails, this throws, but the file is
  // replaced.
  void takePlace();

  // Gets the name `other` instead of replacing the file; false when that name exists.
  bool takeName(const std::filesystem::path& other);

 private:
  bool create(const std::filesystem::path& name);
  void takeOwnership();
  bool moveTo(const std::filesystem::path& other);

  const std::filesystem::path file_;
  const std::optional<FileStatus> previous_;
  std::filesystem::path name_;  // the temporary name; empty once the file is renamed
  UniqueFd fd_;
};

// Removes the user's abandoned temporary files (see FileReplacement) from a directory. Skips files
// that it cannot check. Reports no errors.
void removeAbandonedReplacements(const std::filesystem::path& directory);

}  // namespace quorvane
