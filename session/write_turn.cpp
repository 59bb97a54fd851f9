#include "session/write_turn.h"

#include <fmt/format.h>

#include <optional>
#include <string>

#include "protocol/error.h"

namespace quorvane {
namespace {

// Nobody tells that a turn has ended, so it is asked for again and again. Next to the quarter of a
// second that a write takes, this is short.
constexpr Seconds askingPeriod{0.01};

// What was waited for.
std::string turnText(const std::optional<NodeHolder>& holder) {
  if (!holder) return "another program that is writing to the base; try again when it has finished";
  if (!holder->isStopped) {
    return fmt::format("{}, which is writing to the base; try again when it has finished",
                       nameOf(*holder));
  }
  return fmt::format(
      "{}, which is stopped while it is writing to the base; continue it (kill -CONT {}) or end it",
      nameOf(*holder), holder->process);
}

void waitForTurn(HIDConnection& connection, Clock& clock, Seconds timeout) {
  if (connection.tryWriteTurn()) return;
  const auto deadline = clock.now() + std::chrono::duration_cast<Monotonic::duration>(timeout);
  while (clock.now() < deadline) {
    clock.sleepFor(askingPeriod);
    if (connection.tryWriteTurn()) return;
  }
  const auto holder = connection.turnHolder();
  connection.endWriteTurn();
  throw FanatecError::timeout(turnText(holder));
}

}  // namespace

WriteTurn::WriteTurn(HIDConnection& connection, Clock& clock, Seconds timeout)
    : connection_(connection) {
  waitForTurn(connection_, clock, timeout);
}

}  // namespace quorvane
