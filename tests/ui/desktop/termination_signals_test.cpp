#include "ui/desktop/termination_signals.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <csignal>

namespace quorvane {
namespace {

// RAII: sets the handling of a signal. Needed because shell scripts start background jobs with
// SIGINT ignored.
class Handling {
 public:
  explicit Handling(int signal, void (*handling)(int) = SIG_DFL) : signal_(signal) {
    ::sigaction(signal, nullptr, &before_);
    std::signal(signal, handling);
  }
  ~Handling() { ::sigaction(signal_, &before_, nullptr); }
  Handling(const Handling&) = delete;
  Handling& operator=(const Handling&) = delete;

 private:
  const int signal_;
  struct sigaction before_ {};
};

TEST(TerminationSignals, BecomeEventsOfTheMainThread) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    const Handling handling(signal);
    TerminationSignals termination;
    int received = 0;
    QObject::connect(&termination, &TerminationSignals::received, [&] { ++received; });
    ASSERT_EQ(std::raise(signal), 0);
    EXPECT_EQ(received, 0);
    while (received == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(received, 1);
  }
}

TEST(TerminationSignals, TheSecondOfAKindEndsTheProcess) {
  const Handling handling(SIGTERM);
  const TerminationSignals termination;
  ASSERT_EQ(std::raise(SIGTERM), 0);
  EXPECT_EXIT(std::raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

TEST(TerminationSignals, AnIgnoredSignalStaysIgnored) {
  const Handling handling(SIGHUP, SIG_IGN);
  const TerminationSignals termination;
  struct sigaction now {};
  ::sigaction(SIGHUP, nullptr, &now);
  EXPECT_EQ(now.sa_handler, SIG_IGN);
}

TEST(TerminationSignals, TheFormerHandlingComesBack) {
  const Handling handling(SIGTERM);
  { const TerminationSignals termination; }
  struct sigaction now {};
  ::sigaction(SIGTERM, nullptr, &now);
  EXPECT_EQ(now.sa_handler, SIG_DFL);
}

}  // namespace
}  // namespace quorvane
