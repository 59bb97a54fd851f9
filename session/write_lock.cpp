#include "session/write_lock.h"

#include <fmt/format.h>

#include <optional>
#include <string>

#include "protocol/error.h"

namespace quorvane {
namespace {

// The kernel does not report the release of a lock, so it is polled. The period is short compared
// with the 0.25 s of a write.
constexpr Seconds pollingPeriod{0.01};

// The text of the timeout error.
std::string holderText(const std::optional<NodeHolder>& holder) {
  if (!holder) return "another program that is writing to the base; try again when it has finished";
  if (!holder->isStopped) {
    return fmt::format("{}, which is writing to the base; try again when it has finished",
                       nameOf(*holder));
  }
  return fmt::format(
      "{}, which is stopped while it is writing to the base; continue it (kill -CONT {}) or end it",
      nameOf(*holder), holder->process);
}

void waitForLock(HIDConnection& connection, Clock& clock, Seconds timeout) {
  if (connection.tryWriteLock()) return;
  const auto deadline = clock.now() + std::chrono::duration_cast<Monotonic::duration>(timeout);
  while (clock.now() < deadline) {
    clock.sleepFor(pollingPeriod);
    if (connection.tryWriteLock()) return;
  }
  const auto holder = connection.writeLockHolder();
  connection.endWriteLock();
  throw FanatecError::timeout(holderText(holder));
}

}  // namespace

WriteLock::WriteLock(HIDConnection& connection, Clock& clock, Seconds timeout)
    : connection_(connection) {
  waitForLock(connection_, clock, timeout);
}

}  // namespace quorvane
