#pragma once

#include <libudev.h>

#include <memory>
#include <string>

namespace quorvane {

// Owning pointers for libudev objects. A context and what hangs on it belong to one thread.
template <auto release>
struct UdevRelease {
  template <typename Object>
  void operator()(Object* object) const {
    release(object);
  }
};

using UdevContext = std::unique_ptr<udev, UdevRelease<udev_unref>>;
using UdevDevice = std::unique_ptr<udev_device, UdevRelease<udev_device_unref>>;
using UdevEnumerate = std::unique_ptr<udev_enumerate, UdevRelease<udev_enumerate_unref>>;
using UdevMonitor = std::unique_ptr<udev_monitor, UdevRelease<udev_monitor_unref>>;

// Whether a udev daemon runs, which sets permissions and announces devices after that.
bool udevDaemonRuns();

// A system attribute as text; empty when absent.
std::string udevAttribute(udev_device* device, const char* name);

}  // namespace quorvane
