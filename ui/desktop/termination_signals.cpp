#include "ui/desktop/termination_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace quorvane {
namespace {

// Global, because a signal handler has no other access to the pipe.
std::atomic<int> wakeEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void wakeMainThread(int /*signal*/) {
  const int error = errno;
  const char byte = 0;
  [[maybe_unused]] const auto written = ::write(wakeEnd.load(), &byte, 1);
  errno = error;
}

}  // namespace

// If no pipe can be created, the signals keep their default action.
TerminationSignals::TerminationSignals() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  readEnd_ = UniqueFd(ends[0]);
  writeEnd_ = UniqueFd(ends[1]);
  notifier_.emplace(readEnd_.get(), QSocketNotifier::Read);
  connect(&*notifier_, &QSocketNotifier::activated, this, &TerminationSignals::take);
  wakeEnd = writeEnd_.get();
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    ::sigaction(kinds[i], nullptr, &before_[i]);
    if (before_[i].sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = wakeMainThread;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    ::sigaction(kinds[i], &action, nullptr);
  }
}

TerminationSignals::~TerminationSignals() {
  if (!notifier_) return;
  for (std::size_t i = 0; i < kinds.size(); ++i) ::sigaction(kinds[i], &before_[i], nullptr);
  wakeEnd = -1;
}

void TerminationSignals::take() {
  std::array<char, 16> bytes{};
  while (::read(readEnd_.get(), bytes.data(), bytes.size()) > 0) {
  }
  emit received();
}

}  // namespace quorvane
