#pragma once

#include <libudev.h>

#include <memory>
#include <string>

namespace quorvane {

// Owning pointers for libudev objects. Use a context and its objects from one thread only.
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

// Whether a udev daemon runs. It sets the permissions of devices and announces them after that.
bool udevDaemonRuns();

// Calls `use` with each device of the enumeration. Skips devices that are being removed.
template <typename Use>
void forEachUdevDevice(udev_enumerate* list, Use use) {
  udev_list_entry* entry = udev_enumerate_get_list_entry(list);
  for (; entry != nullptr; entry = udev_list_entry_get_next(entry)) {
    const UdevDevice device(udev_device_new_from_syspath(udev_enumerate_get_udev(list),
                                                         udev_list_entry_get_name(entry)));
    if (device) use(device.get());
  }
}

// A system attribute as text; empty when absent.
std::string udevAttribute(udev_device* device, const char* name);

}  // namespace quorvane
