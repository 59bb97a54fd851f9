#include "hid/return_code.h"

#include <fmt/format.h>

#include <cerrno>

namespace quorvane {
namespace {

constexpr HIDReturn errnoBase = 0x0000C000;

}  // namespace

HIDReturn hidReturnFromErrno(int error) {
  switch (error) {
    case ENODEV:
    case ENOENT:
    case ENXIO:
      return HIDReturnCode::noDevice;
    case EACCES:
    case EPERM:
      return HIDReturnCode::notPermitted;
    case EBUSY:
      return HIDReturnCode::exclusiveAccess;
    default:
      return errnoBase + static_cast<HIDReturn>(error);
  }
}

std::string describeHIDReturn(HIDReturn code) {
  switch (code) {
    case HIDReturnCode::noDevice:
      return "device not found";
    case HIDReturnCode::notPermitted:
      return "not permitted: check System Settings > Privacy & Security > Input Monitoring";
    case HIDReturnCode::exclusiveAccess:
      return "exclusive access: another app has seized the device";
    default:
      return fmt::format("IOReturn 0x{:08X}", code);
  }
}

}  // namespace quorvane
