#include "session/write_turn.h"

#include "protocol/error.h"

namespace quorvane {
namespace {

// Nobody tells that a turn has ended, so it is asked for again and again. Next to the quarter of a
// second that a write takes, this is short.
constexpr Seconds askingPeriod{0.01};

constexpr const char* turnText =
    "another program that is writing to the base; try again when it has finished";

void waitForTurn(HIDConnection& connection, Clock& clock, Seconds timeout) {
  if (connection.tryWriteTurn()) return;
  const auto deadline = clock.now() + std::chrono::duration_cast<Monotonic::duration>(timeout);
  while (clock.now() < deadline) {
    clock.sleepFor(askingPeriod);
    if (connection.tryWriteTurn()) return;
  }
  connection.endWriteTurn();
  throw FanatecError::timeout(turnText);
}

}  // namespace

WriteTurn::WriteTurn(HIDConnection& connection, Clock& clock, Seconds timeout)
    : connection_(connection) {
  waitForTurn(connection_, clock, timeout);
}

}  // namespace quorvane
