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
#include <utility>

#include "support/unique_fd.h"

namespace quorvane {
namespace {

using std::filesystem::path;

constexpr int mostLinks = 40;     // as many as the kernel follows
constexpr int mostNames = 10000;  // tried before giving up
constexpr mode_t permissionBits = 07777;

[[noreturn]] void fail(const path& file) { throw FileError(file, errno); }

std::string sizeText(std::uint64_t bytes) {
  constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;
  if (bytes % mebibyte == 0) return fmt::format("{} MiB", bytes / mebibyte);
  return fmt::format("{} bytes", bytes);
}

template <typename Call>
auto retrying(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

// The path that a chain of symbolic links ends at, which need not exist.
path target(path file) {
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

// None when there is no such file.
std::optional<struct stat> statusOf(const path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) == 0) return status;
  if (errno != ENOENT) fail(file);
  return std::nullopt;
}

void requireRegular(const path& file, const struct stat& status) {
  if (S_ISDIR(status.st_mode)) throw FileError(file, EISDIR);
  if (!S_ISREG(status.st_mode)) throw FileError(file, "Not a regular file");
}

// The rest of an open file; of the size that it says to have, as a rule.
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
    if (length < 0) fail(file);
    if (length == 0) return content;
    requireLength(content.size() + static_cast<std::size_t>(length));
    content.append(block.data(), static_cast<std::size_t>(length));
  }
}

void syncDirectory(const path& directory) {
  const UniqueFd fd(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!fd) fail(directory);
  // Some file systems know no syncing of directories.
  if (retrying([&] { return ::fsync(fd.get()); }) != 0 && errno != EINVAL) fail(directory);
}

// Throws when there is a file that may not be replaced; its status, if there is one.
std::optional<struct stat> requireOverwritable(const path& file) {
  auto status = statusOf(file);
  if (status) {
    requireRegular(file, *status);
    if (::access(file.c_str(), W_OK) != 0) fail(file);
  }
  return status;
}

// A new file in the directory of the one it is to replace; removed again unless it got there.
class Replacement {
 public:
  explicit Replacement(path file) : file_(std::move(file)), previous_(requireOverwritable(file_)) {
    create();
  }
  ~Replacement() {
    if (!name_.empty()) ::unlink(name_.c_str());
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  void write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written =
          retrying([&] { return ::write(fd_.get(), content.data(), content.size()); });
      if (written < 0) fail(file_);
      content.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  void takePlace() {
    if (previous_) takeOwnership();
    if (retrying([&] { return ::fsync(fd_.get()); }) != 0) fail(file_);
    if (::rename(name_.c_str(), file_.c_str()) != 0) fail(file_);
    name_.clear();
    syncDirectory(directoryOf(file_));
  }

 private:
  void create() {
    const mode_t mode = previous_ ? S_IRUSR | S_IWUSR : 0666;  // less what the umask says
    const path directory = directoryOf(file_);
    for (int number = 0; number < mostNames; ++number) {
      const path name = directory / fmt::format(".quorvane-{}-{}.tmp", ::getpid(), number);
      fd_ = UniqueFd(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
      if (fd_) {
        name_ = name;
        return;
      }
      if (errno != EEXIST) break;
    }
    fail(file_);
  }

  // The file of another owner or group stays theirs where this user may say so.
  void takeOwnership() {
    constexpr auto same = static_cast<uid_t>(-1);
    if (previous_->st_gid != ::getegid()) (void)!::fchown(fd_.get(), same, previous_->st_gid);
    if (previous_->st_uid != ::geteuid()) (void)!::fchown(fd_.get(), previous_->st_uid, same);
    if (::fchmod(fd_.get(), previous_->st_mode & permissionBits) != 0) fail(file_);
  }

  const path file_;
  const std::optional<struct stat> previous_;
  path name_;  // of the new file, until it has taken the other's place
  UniqueFd fd_;
};

// Gives `file` the name `other`, which must be free; false when it is not.
bool giveName(const path& file, const path& other) {
  if (::link(file.c_str(), other.c_str()) == 0) return true;
  if (errno == EEXIST) return false;
  if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS && errno != EMLINK) fail(file);
  // A file system without links.
  if (::renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, other.c_str(), RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno != EEXIST) fail(file);
  return false;
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
  const UniqueFd fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!fd) fail(path);
  struct stat status {};
  if (::fstat(fd.get(), &status) != 0) fail(path);
  requireRegular(path, status);
  try {
    return contentOf(path, fd, static_cast<std::uint64_t>(status.st_size), limit);
  } catch (const std::bad_alloc&) {
    throw FileError(path, ENOMEM);
  }
}

void replaceFile(const path& path, std::string_view content) {
  Replacement replacement(target(path));
  replacement.write(content);
  replacement.takePlace();
}

void requireReplaceable(const path& path) {
  const std::filesystem::path file = target(path);
  requireOverwritable(file);
  std::filesystem::path directory = directoryOf(file);
  std::error_code unknown;
  while (directory != directoryOf(directory) && !std::filesystem::exists(directory, unknown)) {
    directory = directoryOf(directory);
  }
  if (!std::filesystem::is_directory(directory, unknown)) throw FileError(directory, ENOTDIR);
  if (::access(directory.c_str(), W_OK | X_OK) != 0) fail(directory);
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
  // Another program may have been faster.
  if (error != EEXIST || !std::filesystem::is_directory(path, unknown)) {
    throw FileError(path, error == EEXIST ? ENOTDIR : error);
  }
}

path keepBeside(const path& path, std::string_view suffix) {
  const std::filesystem::path file = target(path);
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
