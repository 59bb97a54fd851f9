#include "hid/linux/hidraw_device.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <system_error>

#include "hid/linux/hidraw_port.h"

namespace quorvane {
namespace {

HIDOpenResult failed(int error) { return {hidReturnFromErrno(error), nullptr}; }

}  // namespace

std::optional<HIDProperty> HidrawDevice::property(std::string_view key) const {
  return propertyIn(properties_, key);
}

bool HidrawDevice::accessible() const {
  return ::faccessat(AT_FDCWD, node_.c_str(), R_OK | W_OK, AT_EACCESS) == 0;
}

HIDOpenResult HidrawDevice::open(bool exclusive) {
  UniqueFd fd(::open(node_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  if (!fd) return failed(errno);
  if (::flock(fd.get(), (exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0) {
    return errno == EWOULDBLOCK ? HIDOpenResult{HIDReturnCode::exclusiveAccess, nullptr}
                                : failed(errno);
  }
  try {
    return {HIDReturnCode::success,
            std::make_unique<HidrawPort>(std::move(fd), parsedDescriptor().usesReportIDs)};
  } catch (const std::system_error& error) {
    return failed(error.code().value());
  }
}

HIDElements HidrawDevice::parsedDescriptor() const {
  const auto descriptor = property(HIDPropertyKey::reportDescriptor);
  const auto* const bytes = descriptor ? std::get_if<Bytes>(&*descriptor) : nullptr;
  return bytes == nullptr ? HIDElements{} : HIDElements::parse(*bytes);
}

}  // namespace quorvane
