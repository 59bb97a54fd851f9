#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "hid/linux/hidraw_device.h"
#include "hid/linux/udev.h"
#include "hid/port.h"
#include "platform/device_facts.h"
#include "support/event_fd.h"
#include "support/text.h"
#include "support/unique_fd.h"

namespace quorvane {
namespace {

constexpr const char* subsystem = "hidraw";
constexpr std::size_t largestDescriptor = 4096;  // HID_MAX_DESCRIPTOR_SIZE

Bytes readDescriptor(udev_device* hid) {
  const std::string path = std::string(udev_device_get_syspath(hid)) + "/report_descriptor";
  const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  Bytes bytes(largestDescriptor);
  std::size_t length = 0;
  while (file && length < bytes.size()) {
    const ssize_t got = ::read(file.get(), bytes.data() + length, bytes.size() - length);
    if (got <= 0) break;
    length += static_cast<std::size_t>(got);
  }
  bytes.resize(length);
  return bytes;
}

class Properties {
 public:
  void put(std::string_view key, std::int64_t value) { values_.emplace(key, value); }
  void put(std::string_view key, std::string value) {
    if (!value.empty()) values_.emplace(key, std::move(value));
  }

  // Properties of the USB device that is the parent of the HID device. Virtual devices have none.
  void putUSB(udev_device* usb) {
    put(HIDPropertyKey::product, udevAttribute(usb, "product"));
    put(HIDPropertyKey::manufacturer, udevAttribute(usb, "manufacturer"));
    put(HIDPropertyKey::serialNumber, udevAttribute(usb, "serial"));
    if (const auto version = parseHexNumber(udevAttribute(usb, "bcdDevice"))) {
      put(HIDPropertyKey::versionNumber, std::int64_t{*version});
    }
    if (const auto bus = parseInteger(udevAttribute(usb, "busnum"))) {
      put(HIDPropertyKey::locationID, usbLocationID(*bus, udevAttribute(usb, "devpath")));
    }
  }

  // Does not overwrite values from putUSB().
  void putHID(const HIDUevent& uevent) {
    put(HIDPropertyKey::vendorID, uevent.vendorID);
    put(HIDPropertyKey::productID, uevent.productID);
    put(HIDPropertyKey::product, uevent.name);
    put(HIDPropertyKey::serialNumber, uevent.uniq);
    put(HIDPropertyKey::transport, transportName(uevent.bus));
  }

  HIDProperties take(const Bytes& descriptor) {
    addDescriptorProperties(values_, descriptor);
    return std::move(values_);
  }

 private:
  HIDProperties values_;
};

// Null when the node is of another vendor, or is being removed.
std::shared_ptr<HIDDeviceHandle> describe(udev_device* node, std::optional<std::int64_t> vendorID) {
  const char* const devnode = udev_device_get_devnode(node);
  udev_device* const hid = udev_device_get_parent_with_subsystem_devtype(node, "hid", nullptr);
  if (devnode == nullptr || hid == nullptr) return nullptr;
  const HIDUevent uevent = parseHIDUevent(udevAttribute(hid, "uevent"));
  if (vendorID && uevent.vendorID != *vendorID) return nullptr;

  Properties properties;
  udev_device* const usb = udev_device_get_parent_with_subsystem_devtype(node, "usb", "usb_device");
  if (usb != nullptr) properties.putUSB(usb);
  properties.putHID(uevent);
  return std::make_shared<HidrawDevice>(devnode, properties.take(readDescriptor(hid)));
}

class HidrawMonitor final : public HIDMonitor {
 public:
  HidrawMonitor(UdevContext context, UdevMonitor monitor, std::optional<std::int64_t> vendorID)
      : context_(std::move(context)), monitor_(std::move(monitor)), vendorID_(vendorID) {}

  bool waitForEvent() override {
    while (waitReadable(udev_monitor_get_fd(monitor_.get()), stop_.fd())) {
      errno = 0;
      const UdevDevice device(udev_monitor_receive_device(monitor_.get()));
      // The event buffer overflowed: report a change, so that the list is read again.
      if (!device && errno == ENOBUFS) return true;
      if (device && concerns(device.get())) return true;
    }
    return false;
  }

  void interrupt() override { stop_.set(); }

 private:
  bool concerns(udev_device* device) const {
    const char* const action = udev_device_get_action(device);
    if (!changesDevices(action == nullptr ? "" : action)) return false;
    return !vendorID_ || vendorInPath(udev_device_get_devpath(device)) == vendorID_;
  }

  UdevContext context_;
  UdevMonitor monitor_;
  std::optional<std::int64_t> vendorID_;
  EventFd stop_;
};

class HidrawBackend final : public HIDBackend {
 public:
  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) override {
    std::vector<std::shared_ptr<HIDDeviceHandle>> result;
    const UdevContext context(udev_new());
    if (!context) return result;
    const UdevEnumerate list(udev_enumerate_new(context.get()));
    udev_enumerate_add_match_subsystem(list.get(), subsystem);
    // Skip nodes that udev has not processed: they lack their permissions, and an event follows.
    if (udevDaemonRuns()) udev_enumerate_add_match_is_initialized(list.get());
    udev_enumerate_scan_devices(list.get());
    forEachUdevDevice(list.get(), [&](udev_device* node) {
      if (auto device = describe(node, vendorID)) result.push_back(std::move(device));
    });
    return result;
  }

  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) override {
    UdevContext context(udev_new());
    if (!context) return nullptr;
    UdevMonitor monitor(
        udev_monitor_new_from_netlink(context.get(), udevDaemonRuns() ? "udev" : "kernel"));
    if (!monitor) return nullptr;
    udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), subsystem, nullptr);
    if (udev_monitor_enable_receiving(monitor.get()) < 0) return nullptr;
    return std::make_unique<HidrawMonitor>(std::move(context), std::move(monitor), vendorID);
  }
};

}  // namespace

HIDBackend& HIDBackend::system() {
  static HidrawBackend backend;
  return backend;
}

}  // namespace quorvane
