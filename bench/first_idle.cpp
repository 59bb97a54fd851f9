// For LD_PRELOAD with a program that runs Qt's event loop: ends it with status 0 once its main
// thread has been idle in that loop for a while, that is, when its start is complete. Until then
// the program's behaviour is unchanged.

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QThread>
#include <ctime>

namespace {

// Longer than other threads take to post an event, shorter than the blink time of a text cursor.
constexpr timespec whileIdle{0, 300'000'000};

bool isLongerThanIdle(const timespec& timeout) {
  return timeout.tv_sec > whileIdle.tv_sec || timeout.tv_nsec > whileIdle.tv_nsec;
}

bool runsEventLoop() {
  return ::getpid() == ::gettid() && QThread::currentThread()->loopLevel() > 0;
}

int waitAsAsked(pollfd* descriptors, nfds_t count, const timespec* timeout, const sigset_t* mask) {
  timespec rest = timeout != nullptr ? *timeout : timespec{};
  constexpr std::size_t maskSize = 8;  // size of the kernel's signal mask
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

// Interposes the two calls in which Qt's event dispatchers wait, with and without GLib.
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
