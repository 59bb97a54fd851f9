#include "hid/linux/hidraw_port.h"

#include <linux/hidraw.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <utility>

#include "hid/reading_pace.h"
#include "platform/node_holders.h"

namespace quorvane {
namespace {

HIDReturn lastError() { return hidReturnFromErrno(errno); }

// Retries a system call while it fails with EINTR.
template <typename Call>
auto untilAnswered(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace

HidrawPort::HidrawPort(UniqueFd node, bool numbered, Pause pause)
    : node_(std::move(node)),
      numbered_(numbered),
      pause_(std::move(pause)),
      writeQueue_(node_.get()) {}

bool HidrawPort::gatherPause(int signal) { return waitReadable(signal, ReadingPace::gatherPause); }

void HidrawPort::interrupt() {
  interrupted_ = true;
  signal_.set();
}

// Reads before it polls: EAGAIN shows that the queue is empty.
HIDPort::ReadResult HidrawPort::read(std::span<std::uint8_t> buffer) {
  while (!interrupted_) {
    if (const auto result = take(buffer)) return *result;
    if (!waitForReport()) break;
  }
  return {HIDReturnCode::aborted, 0, 0};
}

// Reads without poll() until the queue is empty, then pauses to collect the next batch. Polls the
// node only after a pause without reports: so an idle device causes no wake-ups, and the first
// report after an idle period is read at once.
HIDPort::ReadResult HidrawPort::readBatched(std::span<std::uint8_t> buffer) {
  while (!interrupted_) {
    if (const auto result = take(buffer)) {
      tookAny_ = true;
      return *result;
    }
    if (std::exchange(tookAny_, false)) {
      letGather();
    } else if (!waitForReport()) {
      break;
    }
  }
  return {HIDReturnCode::aborted, 0, 0};
}

// False when the port was interrupted.
bool HidrawPort::waitForReport() {
  while (!interrupted_) {
    if (waitReadable(node_.get(), signal_.fd())) return true;
    signal_.clear();
  }
  return false;
}

void HidrawPort::letGather() {
  if (pause_(signal_.fd())) signal_.clear();
}

// Reads one report without blocking; none when the queue is empty.
std::optional<HIDPort::ReadResult> HidrawPort::take(std::span<std::uint8_t> buffer) {
  const ssize_t length =
      untilAnswered([&] { return ::read(node_.get(), buffer.data(), buffer.size()); });
  if (length < 0 && errno == EAGAIN) {
    taken_ = 0;
    return std::nullopt;
  }
  if (length < 0) return ReadResult{lastError(), 0, 0};
  // A node has no end of file: the device is gone.
  if (length == 0) return ReadResult{HIDReturnCode::noDevice, 0, 0};
  if (++taken_ % queueLength == 0) ++possibleLosses_;
  return ReadResult{HIDReturnCode::success, numbered_ ? buffer[0] : std::uint8_t{0},
                    static_cast<std::size_t>(length)};
}

HIDReturn HidrawPort::write(std::uint8_t reportID, ByteView data) {
  // The kernel expects the report ID first, and 0 for a device without report IDs.
  Bytes unnumbered;
  if (reportID == 0) {
    unnumbered.reserve(data.size() + 1);
    unnumbered.push_back(0);
    unnumbered.insert(unnumbered.end(), data.begin(), data.end());
    data = unnumbered;
  }
  const ssize_t written =
      untilAnswered([&] { return ::write(node_.get(), data.data(), data.size()); });
  if (written < 0) return lastError();
  return static_cast<std::size_t>(written) == data.size() ? HIDReturnCode::success
                                                          : HIDReturnCode::generalError;
}

HIDReturn HidrawPort::getReport(HIDReportKind kind, std::uint8_t reportID,
                                std::span<std::uint8_t> buffer, std::size_t& length) {
  buffer[0] = reportID;
  const unsigned long request =
      kind == HIDReportKind::feature ? HIDIOCGFEATURE(buffer.size()) : HIDIOCGINPUT(buffer.size());
  const int returned = untilAnswered([&] { return ::ioctl(node_.get(), request, buffer.data()); });
  if (returned < 0) return lastError();
  length = static_cast<std::size_t>(returned);
  return HIDReturnCode::success;
}

// Reports success once the device is gone: the next write then fails with noDevice instead of
// timing out on the lock.
bool HidrawPort::tryWriteLock() { return writeQueue_.tryLock() || hasLeft(); }

std::optional<NodeHolder> HidrawPort::writeLockHolder() {
  for (NodeHolder& holder : otherHoldersOf(node_.get())) {
    if (holder.hasWriteLock) return std::move(holder);
  }
  return std::nullopt;
}

bool HidrawPort::hasLeft() const {
  pollfd node{node_.get(), 0, 0};
  return ::poll(&node, 1, 0) > 0;
}

void HidrawPort::watchForOthers() {
  if (!others_) others_.emplace(node_.get());
}

bool HidrawPort::othersMayHaveWritten() {
  if (!others_) return true;
  mayHaveCompany_ = mayHaveCompany_ || writeQueue_.areOthersThere() || others_->mayHaveBeenAny();
  return mayHaveCompany_;
}

}  // namespace quorvane
