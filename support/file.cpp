#include "support/file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <new>
#include <optional>
#include <system_error>

#include "support/file_replacement.h"
#include "support/file_system.h"
#include "support/unique_fd.h"

namespace quorvane {
namespace {

using std::filesystem::path;

constexpr int mostNames = 10000;  // tried before giving up
constexpr int mostReadings = 5;   // of a file that changes while it is read

std::string sizeText(std::uint64_t bytes) {
  constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;
  if (bytes % mebibyte == 0) return fmt::format("{} MiB", bytes / mebibyte);
  return fmt::format("{} bytes", bytes);
}

// The rest of an open file. `size` is the file's size from fstat().
std::string contentOf(const path& file, const UniqueFd& fd, std::uint64_t size,
                      std::uint64_t limit) {
  const auto requireLength = [&](std::uint64_t length) {
    if (length > limit) throw FileError(file, fmt::format("Longer than {}", sizeText(limit)));
  };
  requireLength(size);
  std::string content;
  content.reserve(size);
  std::array<char, 65536> block{};
  for (;;) {
    const ssize_t length = retrying([&] { return ::read(fd.get(), block.data(), block.size()); });
    if (length < 0) failWithErrno(file);
    if (length == 0) return content;
    requireLength(content.size() + static_cast<std::size_t>(length));
    content.append(block.data(), static_cast<std::size_t>(length));
    // The file grows while it is read, perhaps without end: the caller sees its version change.
    if (size > 0 && content.size() > size) return content;
  }
}

// None when the file changed while it was read.
std::optional<FileState> readOnce(const path& file, std::uint64_t limit) {
  const UniqueFd fd(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!fd) failWithErrno(file);
  const FileStatus before = statusOf(file, fd);
  requireRegular(file, before);
  FileState state{contentOf(file, fd, static_cast<std::uint64_t>(before.st_size), limit),
                  versionOf(before)};
  if (versionOf(statusOf(file, fd)) != state.version) return std::nullopt;
  return state;
}

// Gives the file a further name by a hard link; false when that name exists. A file that cannot be
// linked is copied: the file system may not support hard links, and the kernel may refuse them for
// a file of another owner (fs.protected_hardlinks).
bool giveName(const path& file, const path& other) {
  if (::link(file.c_str(), other.c_str()) == 0) return true;
  if (errno == EEXIST) return false;
  if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS && errno != EMLINK) {
    failWithErrno(file);
  }
  FileReplacement copy(file);
  copy.write(readFile(file));
  copy.finish();
  return copy.takeName(other);
}

}  // namespace

FileError::FileError(const path& path, std::string_view reason)
    : std::runtime_error(fmt::format("{}: {}", path.string(), reason)) {}

FileError::FileError(const path& path, int error)
    : std::runtime_error(
          fmt::format("{}: {}", path.string(), std::generic_category().message(error))),
      error_(error) {}

bool FileError::isMissingFile() const { return error_ == ENOENT; }

std::string readFile(const path& path, std::uint64_t limit) {
  return readFileState(path, limit).content;
}

FileState readFileState(const path& path, std::uint64_t limit) {
  try {
    for (int reading = 0; reading < mostReadings; ++reading) {
      if (auto state = readOnce(path, limit)) return *std::move(state);
    }
  } catch (const std::bad_alloc&) {
    throw FileError(path, ENOMEM);
  }
  throw FileError(path, "Another program is writing to it");
}

std::optional<FileState> readFileStateIfAny(const path& path) {
  try {
    return readFileState(path);
  } catch (const FileError& error) {
    if (error.isMissingFile()) return std::nullopt;
    throw;
  }
}

std::optional<FileVersion> versionOfFile(const path& path) {
  const auto status = statusOf(path);
  if (!status) return std::nullopt;
  return versionOf(*status);
}

void replaceFile(const path& path, std::string_view content) {
  FileReplacement replacement(linkTarget(path));
  replacement.write(content);
  replacement.finish();
  replacement.takePlace();
}

void requireReplaceable(const path& path) {
  const std::filesystem::path file = linkTarget(path);
  requireOverwritable(file);
  std::filesystem::path directory = directoryOf(file);
  std::error_code unknown;
  while (directory != directoryOf(directory) && !std::filesystem::exists(directory, unknown)) {
    directory = directoryOf(directory);
  }
  if (!std::filesystem::is_directory(directory, unknown)) throw FileError(directory, ENOTDIR);
  if (::access(directory.c_str(), W_OK | X_OK) != 0) failWithErrno(directory);
}

void createDirectories(const path& path) {
  std::error_code unknown;
  if (path.empty() || std::filesystem::is_directory(path, unknown)) return;
  const std::filesystem::path parent = directoryOf(path);
  if (parent != path) createDirectories(parent);
  if (::mkdir(path.c_str(), 0777) == 0) {
    syncDirectory(parent);
    return;
  }
  const int error = errno;
  // Another program may have created it in the meantime.
  if (error != EEXIST || !std::filesystem::is_directory(path, unknown)) {
    throw FileError(path, error == EEXIST ? ENOTDIR : error);
  }
}

path keepBeside(const path& path, std::string_view suffix) {
  const std::filesystem::path file = linkTarget(path);
  for (int number = 1; number < mostNames; ++number) {
    std::filesystem::path other = file;
    other += fmt::format(".{}", suffix);
    if (number > 1) other += fmt::format("-{}", number);
    if (giveName(file, other)) {
      syncDirectory(directoryOf(file));
      return other;
    }
  }
  throw FileError(file, EEXIST);
}

}  // namespace quorvane
