#include <fcntl.h>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "hid/linux/udev.h"
#include "hid/usb_reset.h"
#include "platform/device_facts.h"
#include "protocol/error.h"
#include "support/text.h"
#include "support/unique_fd.h"

namespace quorvane {
namespace {

std::optional<std::int64_t> hexAttribute(udev_device* device, const char* name) {
  const auto value = parseHexNumber(udevAttribute(device, name));
  if (!value) return std::nullopt;
  return std::int64_t{*value};
}

class UsbfsDevice final : public USBDevice {
 public:
  explicit UsbfsDevice(udev_device* device)
      : vendorID_(hexAttribute(device, "idVendor")), productID_(hexAttribute(device, "idProduct")) {
    if (const auto bus = parseInteger(udevAttribute(device, "busnum"))) {
      locationID_ = usbLocationID(*bus, udevAttribute(device, "devpath"));
    }
    if (const char* const node = udev_device_get_devnode(device)) node_ = node;
  }

  std::optional<std::int64_t> vendorID() const override { return vendorID_; }
  std::optional<std::int64_t> productID() const override { return productID_; }
  std::optional<std::int64_t> locationID() const override { return locationID_; }

  void reset() override {
    const UniqueFd node(::open(node_.c_str(), O_WRONLY | O_CLOEXEC));
    if (!node || ::ioctl(node.get(), USBDEVFS_RESET, nullptr) != 0) {
      throw std::system_error(errno, std::generic_category(), node_);
    }
  }

 private:
  std::optional<std::int64_t> vendorID_;
  std::optional<std::int64_t> productID_;
  std::optional<std::int64_t> locationID_;
  std::string node_;
};

class SystemBus final : public USBBus {
 public:
  std::vector<std::unique_ptr<USBDevice>> devices() override {
    const UdevContext context(udev_new());
    if (!context) throw FanatecError::ioFailed("IOServiceMatching failed");
    const UdevEnumerate list(udev_enumerate_new(context.get()));
    udev_enumerate_add_match_subsystem(list.get(), "usb");
    udev_enumerate_add_match_property(list.get(), "DEVTYPE", "usb_device");
    if (udev_enumerate_scan_devices(list.get()) < 0) {
      throw FanatecError::ioFailed("IOServiceGetMatchingServices failed");
    }
    std::vector<std::unique_ptr<USBDevice>> result;
    forEachUdevDevice(list.get(), [&](udev_device* device) {
      result.push_back(std::make_unique<UsbfsDevice>(device));
    });
    return result;
  }
};

}  // namespace

USBBus& USBBus::system() {
  static SystemBus bus;
  return bus;
}

}  // namespace quorvane
