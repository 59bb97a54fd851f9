#include "cli/event_queue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "support/thread.h"

namespace quorvane {
namespace {

TEST(EventQueue, GivesTheEventsInTheirOrder) {
  EventFd stop;
  EventQueue<int> events;
  events.push(1);
  events.push(2);
  EXPECT_EQ(events.next(stop.fd()), 1);
  events.push(3);
  EXPECT_EQ(events.next(stop.fd()), 2);
  EXPECT_EQ(events.next(stop.fd()), 3);
}

TEST(EventQueue, EndsWhenItIsStoppedEvenWithEventsLeft) {
  EventFd stop;
  EventQueue<int> events;
  events.push(1);
  stop.set();
  EXPECT_EQ(events.next(stop.fd()), std::nullopt);
}

TEST(EventQueue, LosesNothingBetweenThreads) {
  constexpr int count = 10000;
  EventFd stop;
  EventQueue<int> events;
  Thread sender("sender", [&] {
    for (int i = 0; i < count; ++i) events.push(i);
  });
  for (int i = 0; i < count; ++i) ASSERT_EQ(events.next(stop.fd()), i);
}

TEST(EventQueue, WakesAWaitWhenItIsStopped) {
  EventFd stop;
  EventQueue<int> events;
  std::optional<int> got = 1;
  {
    Thread waiter("waiter", [&] { got = events.next(stop.fd()); });
    stop.set();
  }
  EXPECT_EQ(got, std::nullopt);
}

TEST(EventQueue, TellsWhenNoEventArrives) {
  EventFd stop;
  EventQueue<int> events;
  int quiet = 0;
  const auto got = events.next(stop.fd(), std::chrono::milliseconds(1), [&] {
    if (++quiet == 3) events.push(7);
  });
  EXPECT_EQ(got, 7);
  EXPECT_EQ(quiet, 3);
}

}  // namespace
}  // namespace quorvane
