#include "support/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace quorvane {
namespace {

// open() returns the lowest free descriptor, so call this in ascending order.
void takeIfClosed(int descriptor) {
  if (::fcntl(descriptor, F_GETFD) >= 0 || errno != EBADF) return;
  const int access = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
  if (::open("/dev/null", access) != descriptor) std::_Exit(EXIT_FAILURE);
}

void goOn(int /*signal*/) {}

}  // namespace

void prepareStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    takeIfClosed(descriptor);
  }
  // A handler instead of SIG_IGN, because child processes would inherit SIG_IGN through exec().
  struct sigaction action {};
  action.sa_handler = goOn;
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGPIPE, &action, nullptr);
}

}  // namespace quorvane
