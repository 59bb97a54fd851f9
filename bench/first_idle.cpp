// To be preloaded into a program with an event loop of Qt's: ends it, with status 0, once the main
// thread has slept in that loop for a while, which is when the start is over. What the program does
// up to there stays as it is.

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QThread>
#include <ctime>

namespace {

// Longer than other threads take to come up with something, shorter than a text cursor blinks.
constexpr timespec whileIdle{0, 300'000'000};

bool isLongerThanIdle(const timespec& timeout) {
  return timeout.tv_sec > whileIdle.tv_sec || timeout.tv_nsec > whileIdle.tv_nsec;
}

bool runsEventLoop() {
  return ::getpid() == ::gettid() && QThread::currentThread()->loopLevel() > 0;
}

int waitAsAsked(pollfd* descriptors, nfds_t count, const timespec* timeout, const sigset_t* mask) {
  timespec rest = timeout != nullptr ? *timeout : timespec{};
  constexpr std::size_t maskSize = 8;  // the kernel's
  return static_cast<int>(::syscall(SYS_ppoll, descriptors, count,
                                    timeout != nullptr ? &rest : nullptr, mask, maskSize));
}

int waitUnlessIdle(pollfd* descriptors, nfds_t count, const timespec* timeout,
                   const sigset_t* mask) {
  if ((timeout != nullptr && !isLongerThanIdle(*timeout)) || !runsEventLoop()) {
    return waitAsAsked(descriptors, count, timeout, mask);
  }
  const int ready = waitAsAsked(descriptors, count, &whileIdle, mask);
  if (ready == 0) ::_exit(0);
  return ready;
}

}  // namespace

// The two calls that Qt's event dispatchers wait in, with GLib and without.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's are reserved
extern "C" int poll(pollfd* descriptors, nfds_t count, int milliseconds) {
  const timespec timeout{milliseconds / 1000, (milliseconds % 1000) * 1'000'000L};
  return waitUnlessIdle(descriptors, count, milliseconds < 0 ? nullptr : &timeout, nullptr);
}

extern "C" int ppoll(pollfd* descriptors, nfds_t count, const timespec* timeout,
                     const sigset_t* mask) {
  return waitUnlessIdle(descriptors, count, timeout, mask);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
