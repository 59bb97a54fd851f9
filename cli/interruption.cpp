#include "cli/interruption.h"

#include <poll.h>
#include <pthread.h>
#include <sys/signalfd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace quorvane {

Interruption Interruption::catchSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  UniqueFd fd(::signalfd(-1, &signals, SFD_CLOEXEC));
  if (!fd) throw std::system_error(errno, std::generic_category(), "signalfd");
  return Interruption(std::move(fd));
}

bool Interruption::requested() const {
  pollfd watched{fd_.get(), POLLIN, 0};
  return ::poll(&watched, 1, 0) > 0;
}

}  // namespace quorvane
