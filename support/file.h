#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quorvane {

// A file operation that failed. Its text is "PATH: the reason".
class FileError : public std::runtime_error {
 public:
  FileError(const std::filesystem::path& path, std::string_view reason);

  // The reason is the system's message for the errno `error`.
  FileError(const std::filesystem::path& path, int error);

  bool isMissingFile() const;

 private:
  int error_ = 0;  // the errno, if there is one
};

inline constexpr std::uint64_t anyLength = std::numeric_limits<std::uint64_t>::max();

// The content of a regular file. A file that changes while it is read is read again, five times at
// most. Throws FileError, also for a file longer than `limit` bytes, for one that keeps changing,
// and for anything but a regular file. Never waits for a writer of a FIFO.
std::string readFile(const std::filesystem::path& path, std::uint64_t limit = anyLength);

// Identifies one state of a file. Replacing the file changes the version; so does writing to it, as
// far as the resolution of the file system's time stamps allows. Hard links and permissions are not
// part of it.
struct FileVersion {
  std::uint64_t device = 0;
  std::uint64_t node = 0;
  std::int64_t size = 0;
  std::int64_t seconds = 0;  // of the last modification
  std::int64_t nanoseconds = 0;

  bool operator==(const FileVersion&) const = default;
};

struct FileState {
  std::string content;
  FileVersion version;
};

// Like readFile(), with the version of the content.
FileState readFileState(const std::filesystem::path& path, std::uint64_t limit = anyLength);

// Like readFileState(); none when there is no such file.
std::optional<FileState> readFileStateIfAny(const std::filesystem::path& path);

// None when there is no such file. Throws FileError when the status cannot be read.
std::optional<FileVersion> versionOfFile(const std::filesystem::path& path);

// Creates or replaces a regular file, atomically and durably: a reader finds the old content or the
// new, also after a crash. Keeps the permissions of an existing file. Follows a symbolic link.
// Throws FileError. After an error the old file is unchanged, unless only syncing the directory
// failed: then the file is replaced.
//
// One call syncs the data once, renames once, and syncs the directory once.
void replaceFile(const std::filesystem::path& path, std::string_view content);

// Throws the FileError that createDirectories() for the parent and then replaceFile() would throw,
// as far as file types and permissions show. Changes nothing.
void requireReplaceable(const std::filesystem::path& path);

// Creates a directory and its missing parents, durably. Throws FileError.
void createDirectories(const std::filesystem::path& path);

// Gives a file a second name in the same directory, "NAME.SUFFIX", or if that exists
// "NAME.SUFFIX-2" and so on; returns that name. The second name is a hard link, or a copy where the
// file cannot be linked. Follows a symbolic link. Throws FileError.
std::filesystem::path keepBeside(const std::filesystem::path& path, std::string_view suffix);

}  // namespace quorvane
