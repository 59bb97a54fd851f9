#include "tests/support/file_calls.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace quorvane {
namespace {

FileCalls* current = nullptr;

std::string nameOf(int fd) {
  std::array<char, PATH_MAX> name{};
  const std::string link = "/proc/self/fd/" + std::to_string(fd);
  const ssize_t length = ::readlink(link.c_str(), name.data(), name.size());
  return {name.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

// Makes the call unless the current FileCalls makes it fail.
template <typename Call>
auto watched(const char* name, std::string file, std::string newName, const Call& call)
    -> decltype(call()) {
  if (FileCalls* const calls = FileCalls::watching()) {
    if (const int error = calls->judge({name, std::move(file), std::move(newName)})) {
      errno = error;
      return -1;
    }
  }
  return call();
}

template <typename Call>
auto watched(const char* name, const char* file, const Call& call) {
  return watched(name, file, "", call);
}

template <typename Call>
auto watched(const char* name, int fd, const Call& call) {
  return watched(name, FileCalls::watching() == nullptr ? "" : nameOf(fd), "", call);
}

}  // namespace

int FileCalls::pass(const FileCall& /*call*/, std::size_t /*number*/) { return 0; }

FileCalls::Verdict FileCalls::failAt(std::size_t number, int error) {
  return [=](const FileCall&, std::size_t now) { return now == number ? error : 0; };
}

FileCalls::Verdict FileCalls::failEach(std::string_view name, int error) {
  return [=](const FileCall& call, std::size_t) { return call.name == name ? error : 0; };
}

FileCalls::Verdict FileCalls::dieAt(std::size_t number) {
  return [=](const FileCall&, std::size_t now) { return now == number ? ::raise(SIGKILL) : 0; };
}

FileCalls::FileCalls(Verdict verdict) : verdict_(std::move(verdict)) { current = this; }

FileCalls::~FileCalls() { current = nullptr; }

std::size_t FileCalls::count(std::string_view name) const {
  return static_cast<std::size_t>(std::count_if(
      made_.begin(), made_.end(), [&](const FileCall& call) { return call.name == name; }));
}

FileCalls* FileCalls::watching() { return current; }

int FileCalls::judge(FileCall call) {
  current = nullptr;
  made_.push_back(std::move(call));
  const int error = verdict_(made_.back(), made_.size() - 1);
  current = this;
  return error;
}

}  // namespace quorvane

// The linker's --wrap=NAME redirects calls of NAME to __wrap_NAME; __real_NAME is the original.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)

extern "C" {

int __real_access(const char* path, int mode);
int __real_fchmod(int fd, mode_t mode);
int __real_fcntl(int fd, int command, ...);
int __real_fchown(int fd, uid_t user, gid_t group);
int __real_fstat(int fd, struct stat* status);
int __real_fsync(int fd);
int __real_inotify_add_watch(int fd, const char* path, std::uint32_t events);
int __real_inotify_init1(int flags);
int __real_ioctl(int fd, unsigned long request, ...);
int __real_link(const char* path, const char* newPath);
int __real_mkdir(const char* path, mode_t mode);
int __real_open(const char* path, int flags, ...);
ssize_t __real_read(int fd, void* buffer, size_t length);
int __real_rename(const char* path, const char* newPath);
int __real_renameat2(int fd, const char* path, int newFd, const char* newPath, unsigned flags);
int __real_stat(const char* path, struct stat* status);
int __real_unlink(const char* path);
ssize_t __real_write(int fd, const void* buffer, size_t length);

int __wrap_access(const char* path, int mode) {
  return quorvane::watched("access", path, [&] { return __real_access(path, mode); });
}

int __wrap_fchmod(int fd, mode_t mode) {
  return quorvane::watched("fchmod", fd, [&] { return __real_fchmod(fd, mode); });
}

// Reads the optional argument as a pointer, whatever its type.
int __wrap_fcntl(int fd, int command, ...) {
  va_list arguments;
  va_start(arguments, command);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  return quorvane::watched("fcntl", fd, [&] { return __real_fcntl(fd, command, argument); });
}

int __wrap_fchown(int fd, uid_t user, gid_t group) {
  return quorvane::watched("fchown", fd, [&] { return __real_fchown(fd, user, group); });
}

int __wrap_fstat(int fd, struct stat* status) {
  return quorvane::watched("fstat", fd, [&] { return __real_fstat(fd, status); });
}

int __wrap_fsync(int fd) {
  return quorvane::watched("fsync", fd, [&] { return __real_fsync(fd); });
}

int __wrap_inotify_add_watch(int fd, const char* path, std::uint32_t events) {
  return quorvane::watched("inotify_add_watch", path,
                           [&] { return __real_inotify_add_watch(fd, path, events); });
}

int __wrap_inotify_init1(int flags) {
  return quorvane::watched("inotify_init1", "", [&] { return __real_inotify_init1(flags); });
}

// Reads the optional argument as a pointer, whatever its type.
int __wrap_ioctl(int fd, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  return quorvane::watched("ioctl", fd, [&] { return __real_ioctl(fd, request, argument); });
}

int __wrap_link(const char* path, const char* newPath) {
  return quorvane::watched("link", path, newPath, [&] { return __real_link(path, newPath); });
}

int __wrap_mkdir(const char* path, mode_t mode) {
  return quorvane::watched("mkdir", path, [&] { return __real_mkdir(path, mode); });
}

int __wrap_open(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  return quorvane::watched("open", path, [&] { return __real_open(path, flags, mode); });
}

ssize_t __wrap_read(int fd, void* buffer, size_t length) {
  return quorvane::watched("read", fd, [&] { return __real_read(fd, buffer, length); });
}

int __wrap_rename(const char* path, const char* newPath) {
  return quorvane::watched("rename", path, newPath, [&] { return __real_rename(path, newPath); });
}

int __wrap_renameat2(int fd, const char* path, int newFd, const char* newPath, unsigned flags) {
  return quorvane::watched("renameat2", path, newPath,
                           [&] { return __real_renameat2(fd, path, newFd, newPath, flags); });
}

int __wrap_stat(const char* path, struct stat* status) {
  return quorvane::watched("stat", path, [&] { return __real_stat(path, status); });
}

int __wrap_unlink(const char* path) {
  return quorvane::watched("unlink", path, [&] { return __real_unlink(path); });
}

ssize_t __wrap_write(int fd, const void* buffer, size_t length) {
  const quorvane::FileCalls* const calls = quorvane::FileCalls::watching();
  const size_t longest = calls == nullptr ? length : calls->longestWrite();
  return quorvane::watched("write", fd,
                           [&] { return __real_write(fd, buffer, std::min(length, longest)); });
}

}  // extern "C"

// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)
