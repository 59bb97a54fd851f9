#include "support/file_system.h"

#include <fcntl.h>
#include <unistd.h>

#include <system_error>

namespace quorvane {
namespace {

constexpr int mostLinks = 40;  // the kernel's limit

}  // namespace

using std::filesystem::path;

void failWithErrno(const path& file) { throw FileError(file, errno); }

path linkTarget(path file) {
  std::error_code error;
  for (int links = 0; std::filesystem::is_symlink(file, error); ++links) {
    if (links == mostLinks) throw FileError(file, ELOOP);
    const path next = std::filesystem::read_symlink(file, error);
    if (error) throw FileError(file, error.value());
    file = file.parent_path() / next;
  }
  return file;
}

path directoryOf(const path& file) {
  return file.has_parent_path() ? file.parent_path() : path(".");
}

std::optional<FileStatus> statusOf(const path& file) {
  FileStatus status{};
  if (::stat(file.c_str(), &status) == 0) return status;
  if (errno != ENOENT) failWithErrno(file);
  return std::nullopt;
}

FileStatus statusOf(const path& file, const UniqueFd& fd) {
  FileStatus status{};
  if (::fstat(fd.get(), &status) != 0) failWithErrno(file);
  return status;
}

FileVersion versionOf(const FileStatus& status) {
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
          status.st_mtim.tv_nsec};
}

void requireRegular(const path& file, const FileStatus& status) {
  if (S_ISDIR(status.st_mode)) throw FileError(file, EISDIR);
  if (!S_ISREG(status.st_mode)) throw FileError(file, "Not a regular file");
}

std::optional<FileStatus> requireOverwritable(const path& file) {
  auto status = statusOf(file);
  if (status) {
    requireRegular(file, *status);
    if (::access(file.c_str(), W_OK) != 0) failWithErrno(file);
  }
  return status;
}

void writeAll(const path& file, const UniqueFd& fd, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = retrying([&] { return ::write(fd.get(), text.data(), text.size()); });
    if (written < 0) failWithErrno(file);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void syncDirectory(const path& directory) {
  const UniqueFd fd(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!fd) failWithErrno(directory);
  // EINVAL: the file system does not support syncing directories.
  if (retrying([&] { return ::fsync(fd.get()); }) != 0 && errno != EINVAL) failWithErrno(directory);
}

}  // namespace quorvane
