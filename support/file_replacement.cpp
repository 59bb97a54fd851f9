#include "support/file_replacement.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>

#include "support/file_lock.h"

namespace quorvane {
namespace {

using std::filesystem::path;

constexpr int mostTemporaryNames = 10000;  // tried before giving up
constexpr mode_t permissionBits = 07777;
constexpr std::string_view temporaryPrefix = ".quorvane-";
constexpr std::string_view temporarySuffix = ".tmp";

path temporaryName(const path& directory, int number) {
  return directory / fmt::format("{}{}-{}{}", temporaryPrefix, ::getpid(), number, temporarySuffix);
}

bool isNumber(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isTemporaryName(std::string_view name) {
  if (!name.starts_with(temporaryPrefix) || !name.ends_with(temporarySuffix)) return false;
  name.remove_prefix(temporaryPrefix.size());
  if (name.size() < temporarySuffix.size()) return false;
  name.remove_suffix(temporarySuffix.size());
  const std::size_t dash = name.find('-');
  return dash != std::string_view::npos && isNumber(name.substr(0, dash)) &&
         isNumber(name.substr(dash + 1));
}

// FileReplacement::create() locks its file right after creating it, and picks another name if the
// file was locked or removed before that. So a file that can be locked here is not in use, and
// cannot come into use.
void removeUnlessLocked(const path& name) {
  const UniqueFd fd(::open(name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  FileStatus status{};
  if (!fd || ::fstat(fd.get(), &status) != 0) return;
  if (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid()) return;
  if (tryLockFile(fd) != FileLockResult::locked) return;
  FileStatus named{};
  if (::stat(name.c_str(), &named) != 0 || versionOf(named) != versionOf(status)) return;
  ::unlink(name.c_str());
}

}  // namespace

FileReplacement::FileReplacement(path file)
    : file_(std::move(file)), previous_(requireOverwritable(file_)) {
  const path directory = directoryOf(file_);
  for (int number = 0; number < mostTemporaryNames; ++number) {
    if (create(temporaryName(directory, number))) return;
  }
  throw FileError(file_, EEXIST);
}

FileReplacement::~FileReplacement() {
  if (!name_.empty()) ::unlink(name_.c_str());
}

bool FileReplacement::create(const path& name) {
  const mode_t mode = previous_ ? S_IRUSR | S_IWUSR : 0666;  // before the umask
  UniqueFd fd(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (!fd) {
    if (errno != EEXIST) failWithErrno(file_);
    return false;
  }
  // Between open() and the lock, removeUnlessLocked() of another process may lock or remove it.
  const FileLockResult lock = tryLockFile(fd);
  if (lock == FileLockResult::heldByOther) return false;
  FileStatus status{};
  if (lock == FileLockResult::locked && ::fstat(fd.get(), &status) == 0 && status.st_nlink == 0) {
    return false;
  }
  name_ = name;
  fd_ = std::move(fd);
  return true;
}

void FileReplacement::write(std::string_view content) { writeAll(file_, fd_, content); }

FileVersion FileReplacement::finish() {
  if (previous_) takeOwnership();
  if (retrying([&] { return ::fsync(fd_.get()); }) != 0) failWithErrno(file_);
  return versionOf(statusOf(file_, fd_));
}

void FileReplacement::takePlace() {
  if (::rename(name_.c_str(), file_.c_str()) != 0) failWithErrno(file_);
  name_.clear();
  syncDirectory(directoryOf(file_));
}

bool FileReplacement::takeName(const path& other) {
  if (!moveTo(other)) return false;
  name_.clear();
  return true;
}

bool FileReplacement::moveTo(const path& other) {
  if (::renameat2(AT_FDCWD, name_.c_str(), AT_FDCWD, other.c_str(), RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno == EEXIST) return false;
  if (errno != EINVAL && errno != ENOSYS) failWithErrno(file_);
  // The file system does not support RENAME_NOREPLACE.
  std::error_code error;
  if (std::filesystem::symlink_status(other, error).type() !=
      std::filesystem::file_type::not_found) {
    return false;
  }
  if (::rename(name_.c_str(), other.c_str()) != 0) failWithErrno(file_);
  return true;
}

// Keeps the owner and group of the previous file, as far as this user may set them.
void FileReplacement::takeOwnership() {
  constexpr auto same = static_cast<uid_t>(-1);
  if (previous_->st_gid != ::getegid()) (void)!::fchown(fd_.get(), same, previous_->st_gid);
  if (previous_->st_uid != ::geteuid()) (void)!::fchown(fd_.get(), previous_->st_uid, same);
  if (::fchmod(fd_.get(), previous_->st_mode & permissionBits) != 0) failWithErrno(file_);
}

void removeAbandonedReplacements(const path& directory) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error)) {
    if (isTemporaryName(entry->path().filename().native())) removeUnlessLocked(entry->path());
  }
}

}  // namespace quorvane
