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

  // With the system's text for an errno.
  FileError(const std::filesystem::path& path, int error);

  bool isMissingFile() const;

 private:
  int error_ = 0;  // the errno, if there is one
};

inline constexpr std::uint64_t anyLength = std::numeric_limits<std::uint64_t>::max();

// The content of a regular file. Throws FileError: also for anything else that has a path (a
// directory, a FIFO; it is never waited for), for a file longer than `limit` bytes, and for one
// that another program keeps writing to. A file that is changed in the middle is read again.
std::string readFile(const std::filesystem::path& path, std::uint64_t limit = anyLength);

// Tells one state of a file from another: replacing a file changes it, and so does writing to it as
// far as the file system's time stamps can tell. Links and permissions do not matter.
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

// As readFile, with the version that the content is of.
FileState readFileState(const std::filesystem::path& path, std::uint64_t limit = anyLength);

// The same; none when there is no such file.
std::optional<FileState> readFileStateIfAny(const std::filesystem::path& path);

// None when there is no such file. Throws FileError when that cannot be told.
std::optional<FileVersion> versionOfFile(const std::filesystem::path& path);

// Creates or replaces a regular file, durably and as a whole: whoever reads it, also after a crash
// at any moment, finds the old content or the new. The permissions of an existing file are kept; a
// symbolic link is followed. Throws FileError, and then the old file is as it was; only a failure
// to make the replacement durable comes after it.
//
// One call syncs the data once, renames once, and syncs the directory once.
void replaceFile(const std::filesystem::path& path, std::string_view content);

// Throws the FileError that replaceFile, after createDirectories for what is above it, would meet
// as far as permissions tell. Changes nothing.
void requireReplaceable(const std::filesystem::path& path);

// Creates a directory and what is missing above it, durably. Throws FileError.
void createDirectories(const std::filesystem::path& path);

// Lets the content of a file live on under a second name beside it, "NAME.SUFFIX", or when that is
// taken "NAME.SUFFIX-2" and so on; returns that name. A symbolic link is followed. The first name
// stays. The second is a link, or a copy where the file cannot be linked. Throws FileError.
std::filesystem::path keepBeside(const std::filesystem::path& path, std::string_view suffix);

}  // namespace quorvane
