#include "support/shared_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "support/file_lock.h"
#include "support/file_replacement.h"
#include "support/file_system.h"

namespace quorvane {
namespace {

using std::filesystem::path;

constexpr Seconds pollInterval(0.01);   // the kernel cannot wait for a lock with a timeout
constexpr Seconds settlingPause(0.02);  // between two writes of a program that rewrites a file
constexpr int mostAttempts = 3;         // under one lock

path lockFileOf(const path& file) { return directoryOf(file) / ".lock"; }

// Lets the directory's owner use a lock file that root created.
void giveToDirectoryOwner(const UniqueFd& fd, const path& directory) {
  FileStatus status{};
  if (::geteuid() != 0 || ::stat(directory.c_str(), &status) != 0 || status.st_uid == 0) return;
  (void)!::fchown(fd.get(), status.st_uid, status.st_gid);
}

UniqueFd openLockFile(const path& name) {
  constexpr int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  UniqueFd fd(::open(name.c_str(), flags));
  if (fd || errno != ENOENT) return fd;
  fd = UniqueFd(::open(name.c_str(), flags | O_CREAT, S_IRUSR | S_IWUSR));
  if (fd) giveToDirectoryOwner(fd, directoryOf(name));
  return fd;
}

// Throws the current errno. Names the lock file if only that prevents the change, else the data
// file.
[[noreturn]] void failToLock(const path& file, const path& lockFile) {
  const int error = errno;
  requireOverwritable(file);
  FileStatus status{};
  const bool isInTheWay =
      (error == EACCES || error == EPERM || error == ELOOP || error == EISDIR) &&
      ::lstat(lockFile.c_str(), &status) == 0;
  throw FileError(isInTheWay ? lockFile : file, error);
}

// Byte ranges of the lock file: the lock itself, and the place of the process that is next. A
// process takes the second first and holds it while it waits. Otherwise a process that makes many
// changes could starve one that polls every 10 ms.
constexpr FileRange lockRange{0, 1};
constexpr FileRange nextRange{1, 1};

// False when another process holds the lock. Always succeeds on a file system without locks.
bool tryLock(const path& file, const UniqueFd& lockFile, FileRange range) {
  switch (tryLockFile(lockFile, range)) {
    case FileLockResult::locked:
    case FileLockResult::unsupported:
      return true;
    case FileLockResult::heldByOther:
      return false;
    case FileLockResult::failed:
      failToLock(file, lockFileOf(file));
  }
  return false;
}

// Takes the lock for a file; closing the returned descriptor releases it. None when another process
// holds the lock; then `waiting` holds the place in the queue, if that was free.
std::optional<UniqueFd> tryLockFor(const path& file, UniqueFd& waiting) {
  if (!waiting) {
    UniqueFd opened = openLockFile(lockFileOf(file));
    if (!opened) failToLock(file, lockFileOf(file));
    if (!tryLock(file, opened, nextRange)) return std::nullopt;
    waiting = std::move(opened);
  }
  if (!tryLock(file, waiting, lockRange)) return std::nullopt;
  unlockFile(waiting, nextRange);
  return std::exchange(waiting, UniqueFd());
}

std::optional<FileVersion> versionOf(const std::optional<FileState>& state) {
  if (!state) return std::nullopt;
  return state->version;
}

// A file that is open for appending.
struct Appendable {
  UniqueFd fd;
  bool isNew = false;
};

Appendable openForAppending(const path& file) {
  constexpr int flags = O_RDWR | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  Appendable opened{UniqueFd(::open(file.c_str(), flags))};
  if (!opened.fd && errno == ENOENT) {
    opened = {UniqueFd(::open(file.c_str(), flags | O_CREAT, 0666)), true};  // before the umask
    if (opened.fd) giveToDirectoryOwner(opened.fd, directoryOf(file));
  }
  if (!opened.fd) failWithErrno(file);
  requireRegular(file, statusOf(file, opened.fd));
  return opened;
}

bool endsWithinLine(const path& file, const UniqueFd& fd) {
  const off_t size = statusOf(file, fd).st_size;
  if (size == 0) return false;
  char last = 0;
  if (retrying([&] { return ::pread(fd.get(), &last, 1, size - 1); }) != 1) failWithErrno(file);
  return last != '\n';
}

// The second name of a file that is about to be replaced. The destructor removes the name if the
// file was not replaced: otherwise every retry would add another one.
class KeptFile {
 public:
  KeptFile(const path& file, const std::optional<FileState>& state,
           const std::optional<std::string>& suffix)
      : file_(file), version_(versionOf(state)) {
    if (state && suffix) name_ = keepBeside(file, *suffix);
  }
  ~KeptFile() {
    if (name_.empty()) return;
    try {
      if (versionOfFile(file_) == version_) ::unlink(name_.c_str());
    } catch (const FileError&) {
      return;  // not known whether it was replaced: keep the name
    }
  }
  KeptFile(const KeptFile&) = delete;
  KeptFile& operator=(const KeptFile&) = delete;

  path take() { return std::exchange(name_, {}); }

 private:
  const path& file_;
  const std::optional<FileVersion> version_;
  path name_;
};

}  // namespace

SharedFile::SharedFile(path file, Clock& clock) : file_(std::move(file)), clock_(clock) {}

FileError SharedFile::timeoutError() const {
  return {file_,
          "Other programs have been changing it for 2 seconds. Nothing was written. Try again, and "
          "end a Quorvane that hangs"};
}

// Repeats the attempt while another process holds the lock.
template <typename Attempt>
SharedFile::Result SharedFile::persist(const Attempt& attempt, Seconds timeout) const {
  const auto begin = clock_.now();
  for (Place place;;) {
    if (auto result = attempt(place)) return *std::move(result);
    if (clock_.now() - begin >= timeout) throw timeoutError();
    clock_.sleepFor(pollInterval);
  }
}

SharedFile::Result SharedFile::change(const Change& change, Seconds timeout) const {
  return persist([&](Place& place) { return tryChange(change, place); }, timeout);
}

SharedFile::Result SharedFile::append(std::string_view lines, Sync sync, Seconds timeout) const {
  return persist([&](Place& place) { return tryAppend(lines, sync, place); }, timeout);
}

std::optional<SharedFile::Result> SharedFile::tryAppend(std::string_view lines, Sync sync,
                                                        Place& place) const {
  const path file = linkTarget(file_);
  createDirectories(directoryOf(file));
  const auto lock = tryLockFor(file, place.lockFile_);
  if (!lock) return std::nullopt;
  const Appendable opened = openForAppending(file);
  std::string text = endsWithinLine(file, opened.fd) ? "\n" : "";
  text += lines;
  writeAll(file, opened.fd, text);
  if (sync == Sync::yes) {
    if (retrying([&] { return ::fsync(opened.fd.get()); }) != 0) failWithErrno(file);
    if (opened.isNew) syncDirectory(directoryOf(file));
  }
  return Result{versionOf(statusOf(file, opened.fd)), {}};
}

std::optional<SharedFile::Result> SharedFile::tryChange(const Change& change, Place& place) const {
  const path file = linkTarget(file_);
  createDirectories(directoryOf(file));
  const auto lock = tryLockFor(file, place.lockFile_);
  if (!lock) return std::nullopt;
  removeAbandonedReplacements(directoryOf(file));
  for (int number = 0; number < mostAttempts; ++number) {
    if (auto result = attempt(file, change)) return result;
  }
  return std::nullopt;
}

// None when a program that does not take the lock changed the file meanwhile.
std::optional<SharedFile::Result> SharedFile::attempt(const path& file,
                                                      const Change& change) const {
  const auto state = readFileStateIfAny(file);
  const auto update = change(state ? std::optional(state->content) : std::nullopt);
  if (!update) return Result{versionOf(state), {}};
  if (state && update->keepOldAs && !isSettled(file, *state)) return std::nullopt;
  FileReplacement replacement(file);
  replacement.write(update->content);
  const FileVersion version = replacement.finish();
  KeptFile kept(file, state, update->keepOldAs);
  if (versionOfFile(file) != versionOf(state)) return std::nullopt;
  replacement.takePlace();
  if (update->whenReplaced) update->whenReplaced();
  return Result{version, kept.take()};
}

bool SharedFile::isSettled(const path& file, const FileState& state) const {
  clock_.sleepFor(settlingPause);
  const auto again = readFileStateIfAny(file);
  return again && again->version == state.version && again->content == state.content;
}

}  // namespace quorvane
