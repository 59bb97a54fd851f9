#include <cerrno>
#include <cstdio>
#include <cstring>

#include "cli/command_line.h"

namespace {

// Results that nobody could read (a full disk, a closed pipe) are not done.
bool allWritten() {
  const bool written = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
  if (!written) std::fprintf(stderr, "Could not write the output: %s\n", std::strerror(errno));
  return written;
}

}  // namespace

int main(int argc, char** argv) {
  using quorvane::ExitStatus;
  const std::vector<std::string> words(argv + 1, argv + argc);
  ExitStatus status = quorvane::runCommandLine(words, quorvane::World{});
  if (!allWritten() && status == ExitStatus::done) status = ExitStatus::failed;
  return static_cast<int>(status);
}
