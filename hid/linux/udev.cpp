#include "hid/linux/udev.h"

#include <unistd.h>

namespace quorvane {

bool udevDaemonRuns() { return ::access("/run/udev/control", F_OK) == 0; }

std::string udevAttribute(udev_device* device, const char* name) {
  const char* const value = udev_device_get_sysattr_value(device, name);
  return value == nullptr ? std::string() : std::string(value);
}

}  // namespace quorvane
