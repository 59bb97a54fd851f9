#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string_view>

#include "support/file.h"
#include "support/unique_fd.h"

// File helpers for the sources of support/. All functions block, and throw FileError.

namespace quorvane {

using FileStatus = struct stat;

// Throws a FileError with the current errno.
[[noreturn]] void failWithErrno(const std::filesystem::path& file);

// The result of a system call, retried while it fails with EINTR.
template <typename Call>
auto retrying(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

// The path that a chain of symbolic links ends at, which need not exist.
std::filesystem::path linkTarget(std::filesystem::path file);

std::filesystem::path directoryOf(const std::filesystem::path& file);

// None when there is no such file.
std::optional<FileStatus> statusOf(const std::filesystem::path& file);

// The status of an open file; the path is for error messages.
FileStatus statusOf(const std::filesystem::path& file, const UniqueFd& fd);

FileVersion versionOf(const FileStatus& status);

void requireRegular(const std::filesystem::path& file, const FileStatus& status);

// The status of a file; none when there is no such file. Throws when the file may not be replaced.
std::optional<FileStatus> requireOverwritable(const std::filesystem::path& file);

// Writes the whole text at the file's position.
void writeAll(const std::filesystem::path& file, const UniqueFd& fd, std::string_view text);

void syncDirectory(const std::filesystem::path& directory);

}  // namespace quorvane
