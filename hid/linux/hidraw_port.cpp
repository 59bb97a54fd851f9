#include "hid/linux/hidraw_port.h"

#include <linux/hidraw.h>
#include <sys/ioctl.h>

#include <cerrno>

namespace quorvane {
namespace {

HIDReturn lastError() { return hidReturnFromErrno(errno); }

}  // namespace

HIDPort::ReadResult HidrawPort::read(std::span<std::uint8_t> buffer) {
  while (waitReadable(node_.get(), stop_.fd())) {
    const ssize_t length = ::read(node_.get(), buffer.data(), buffer.size());
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) continue;
    if (length < 0) return {lastError(), 0, 0};
    // A node never ends; whatever ends is gone.
    if (length == 0) return {HIDReturnCode::noDevice, 0, 0};
    return {HIDReturnCode::success, numbered_ ? buffer[0] : std::uint8_t{0},
            static_cast<std::size_t>(length)};
  }
  return {HIDReturnCode::aborted, 0, 0};
}

HIDReturn HidrawPort::write(std::uint8_t reportID, ByteView data) {
  // The kernel wants the report ID first, and 0 where there are none.
  Bytes unnumbered;
  if (reportID == 0) {
    unnumbered.reserve(data.size() + 1);
    unnumbered.push_back(0);
    unnumbered.insert(unnumbered.end(), data.begin(), data.end());
    data = unnumbered;
  }
  const ssize_t written = ::write(node_.get(), data.data(), data.size());
  if (written < 0) return lastError();
  return static_cast<std::size_t>(written) == data.size() ? HIDReturnCode::success
                                                          : HIDReturnCode::generalError;
}

HIDReturn HidrawPort::getReport(HIDReportKind kind, std::uint8_t reportID,
                                std::span<std::uint8_t> buffer, std::size_t& length) {
  buffer[0] = reportID;
  const unsigned long request =
      kind == HIDReportKind::feature ? HIDIOCGFEATURE(buffer.size()) : HIDIOCGINPUT(buffer.size());
  const int returned = ::ioctl(node_.get(), request, buffer.data());
  if (returned < 0) return lastError();
  length = static_cast<std::size_t>(returned);
  return HIDReturnCode::success;
}

void HidrawPort::watchForOthers() {
  if (!visits_) visits_.emplace(node_.get());
}

bool HidrawPort::othersMayHaveWritten() {
  const bool hasComeOrGone = !visits_ || visits_->anySinceLastAsked();
  return line_.areOthersThere() || hasComeOrGone;
}

}  // namespace quorvane
