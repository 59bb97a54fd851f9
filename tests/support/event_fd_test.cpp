#include "support/event_fd.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <chrono>
#include <optional>

#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/support/child_process.h"

namespace quorvane {
namespace {

bool isSet(const EventFd& event) {
  pollfd watched{event.fd(), POLLIN, 0};
  return ::poll(&watched, 1, 0) == 1 && (watched.revents & POLLIN) != 0;
}

TEST(EventFd, StartsClear) { EXPECT_FALSE(isSet(EventFd())); }

TEST(EventFd, StaysSetUntilItIsCleared) {
  EventFd event;
  event.set();
  EXPECT_TRUE(isSet(event));
  EXPECT_TRUE(isSet(event));
  event.clear();
  EXPECT_FALSE(isSet(event));
}

TEST(EventFd, OneClearTakesBackManySets) {
  EventFd event;
  for (int i = 0; i < 1000; ++i) event.set();
  event.clear();
  EXPECT_FALSE(isSet(event));
  event.set();
  EXPECT_TRUE(isSet(event));
}

TEST(EventFd, ClearingAClearOneDoesNotBlock) {
  EventFd event;
  event.clear();
  event.clear();
  EXPECT_FALSE(isSet(event));
}

TEST(EventFd, IsNotPassedOnToOtherPrograms) {
  const EventFd event;
  EXPECT_NE(::fcntl(event.fd(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(WaitReadable, TellsWhichDescriptorWokeIt) {
  struct Case {
    bool first;
    bool stop;
    bool result;
  };
  for (const auto& [first, stop, result] :
       {Case{true, false, true}, Case{false, true, false}, Case{true, true, false}}) {
    EventFd data;
    EventFd end;
    if (first) data.set();
    if (stop) end.set();
    EXPECT_EQ(waitReadable(data.fd(), end.fd()), result) << first << stop;
  }
}

TEST(WaitReadable, WaitsForTwoDescriptorsWithinItsLimit) {
  using std::chrono::milliseconds;
  EventFd data;
  EventFd stop;
  EXPECT_EQ(waitReadable(data.fd(), stop.fd(), milliseconds(0)), std::nullopt);
  EXPECT_EQ(waitReadable(data.fd(), stop.fd(), milliseconds(1)), std::nullopt);
  data.set();
  EXPECT_EQ(waitReadable(data.fd(), stop.fd(), std::chrono::hours(1)), true);
  stop.set();
  EXPECT_EQ(waitReadable(data.fd(), stop.fd(), std::chrono::hours(1)), false);
}

TEST(WaitReadable, ADescriptorInErrorIsNews) {
  Pipe pipe;
  const EventFd stop;
  pipe.writing.reset();
  EXPECT_TRUE(waitReadable(pipe.reading.get(), stop.fd()));
}

TEST(WaitReadable, WaitsForOneDescriptorWithinItsLimit) {
  using std::chrono::milliseconds;
  EventFd event;
  EXPECT_FALSE(waitReadable(event.fd(), milliseconds(0)));
  EXPECT_FALSE(waitReadable(event.fd(), milliseconds(1)));
  event.set();
  EXPECT_TRUE(waitReadable(event.fd(), milliseconds(0)));
  EXPECT_TRUE(waitReadable(event.fd(), std::chrono::hours(1)));
  Pipe pipe;
  pipe.writing.reset();
  EXPECT_TRUE(waitReadable(pipe.reading.get(), std::chrono::hours(1)));
}

TEST(WaitReadable, WakesWhenAnotherThreadSetsEitherDescriptor) {
  for (const bool stops : {false, true}) {
    EventFd data;
    EventFd stop;
    Semaphore ready;
    bool result = stops;
    Thread waiting("waiting", [&] {
      ready.signal();
      result = waitReadable(data.fd(), stop.fd());
    });
    ready.wait();
    (stops ? stop : data).set();
    waiting.join();
    EXPECT_EQ(result, !stops);
  }
}

}  // namespace
}  // namespace quorvane
