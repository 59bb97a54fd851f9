#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <optional>

#include "support/file.h"
#include "support/unique_fd.h"

// What the sources of support/ share that handle files. All of it blocks, and throws FileError.

namespace quorvane {

using FileStatus = struct stat;

// Throws the FileError of the present errno.
[[noreturn]] void failWithErrno(const std::filesystem::path& file);

// The result of a system call, made again while a signal interrupts it.
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

// Of the open file; the path is for what goes wrong.
FileStatus statusOf(const std::filesystem::path& file, const UniqueFd& fd);

FileVersion versionOf(const FileStatus& status);

void requireRegular(const std::filesystem::path& file, const FileStatus& status);

// Throws when there is a file that may not be replaced; its status, if there is one.
std::optional<FileStatus> requireOverwritable(const std::filesystem::path& file);

void syncDirectory(const std::filesystem::path& directory);

}  // namespace quorvane
