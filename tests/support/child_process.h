#pragma once

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <functional>
#include <string>

#include "support/unique_fd.h"

namespace quorvane {

struct Pipe {
  UniqueFd reading;
  UniqueFd writing;

  Pipe() {
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    reading = UniqueFd(ends[0]);
    writing = UniqueFd(ends[1]);
  }
};

// A fork of this process that runs one function and ends.
class ChildProcess {
 public:
  // The child's result is what `body` returns, or the text of what it throws.
  explicit ChildProcess(const std::function<std::string()>& body) : process_(::fork()) {
    if (process_ == 0) run(body);
    result_.writing.reset();
  }

  pid_t id() const { return process_; }

  void kill() const { ::kill(process_, SIGKILL); }

  // Waits until it has stopped itself (SIGSTOP).
  void waitUntilStopped() const {
    int status = 0;
    EXPECT_EQ(::waitpid(process_, &status, WUNTRACED), process_);
    EXPECT_TRUE(WIFSTOPPED(status));
  }

  void goOn() const { ::kill(process_, SIGCONT); }

  // Waits for its end. Returns the result, or "signal N" if a signal ended it.
  std::string end() {
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0;
         (got = ::read(result_.reading.get(), buffer.data(), buffer.size())) > 0;) {
      text.append(buffer.data(), static_cast<std::size_t>(got));
    }
    int status = 0;
    EXPECT_EQ(::waitpid(process_, &status, 0), process_);
    return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status)) : text;
  }

 private:
  [[noreturn]] void run(const std::function<std::string()>& body) const {
    std::string text;
    try {
      text = body();
    } catch (const std::exception& error) {
      text = error.what();
    }
    const ssize_t written = ::write(result_.writing.get(), text.data(), text.size());
    ::_exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
  }

  Pipe result_;
  pid_t process_;
};

inline std::string inChildProcess(const std::function<std::string()>& body) {
  return ChildProcess(body).end();
}

constexpr uid_t ordinaryUser = 65534;

// Drops root's privileges for good. Does nothing if the process is not root.
inline void becomeOrdinaryUser(uid_t user = ordinaryUser) {
  if (::geteuid() != 0) return;
  if (::setgroups(0, nullptr) != 0 || ::setgid(user) != 0 || ::setuid(user) != 0) ::_exit(1);
}

}  // namespace quorvane
