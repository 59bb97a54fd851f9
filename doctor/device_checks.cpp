#include "doctor/device_checks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "doctor/sandbox.h"

namespace quorvane {

const char* const noBaseReason = "no base is there to look at";
const char* const simulatedReason = "the base is simulated";

namespace {

constexpr const char* usbDriver = "usbhid";
constexpr const char* noDriverReason = "no driver serves the base";
constexpr const char* replug = "unplug the base and plug it in again";
constexpr const char* connectIt =
    "Power the base on, set it to PC mode with its mode button, and connect its USB cable straight "
    "to the computer. If it stays away, try another cable and another port.";
constexpr const char* consoleMode =
    "If that is your base, it is in a mode for a console: switch it to PC mode with its mode "
    "button.";

std::string loadDriver() { return fmt::format("Load the driver, then {}", replug); }

std::string nameOf(std::int64_t productID, const std::string& product) {
  if (FanatecProduct::lookup(productID) || product.empty()) {
    return FanatecProduct::describe(productID);
  }
  return fmt::format("{} (0x{:04x})", product, static_cast<std::uint32_t>(productID));
}

// The distinct names of the vendor's other devices, and whether all are in the catalogue.
struct Others {
  std::vector<std::string> names;
  bool areAllKnown = true;

  void add(std::int64_t productID, const std::string& product) {
    const std::string name = nameOf(productID, product);
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    areAllKnown = areAllKnown && FanatecProduct::lookup(productID).has_value();
  }
};

Others othersIn(const MachineFacts& machine) {
  Others others;
  for (const USBDeviceFacts& device : machine.usb) others.add(device.productID, device.product);
  for (const HIDFacts& device : machine.hid) {
    if (device.usbInterface.empty()) others.add(device.productID, device.product);
  }
  return others;
}

Verdict judgeMissing(const MachineFacts& machine) {
  const Others others = othersIn(machine);
  if (!others.names.empty()) {
    return Verdict::fail(
        fmt::format("no wheel base, only: {}", fmt::join(others.names, ", ")),
        others.areAllKnown ? connectIt : std::string(consoleMode) + " Otherwise: " + connectIt);
  }
  if (!machine.hasUSB) {
    return Verdict::fail("this system shows no USB bus",
                         machine.isContainer
                             ? "This is a container: run Quorvane outside of it, or give the "
                               "container /sys and the base's device."
                             : "Load the drivers of the computer's USB ports, or run Quorvane on a "
                               "machine that has some.");
  }
  return Verdict::fail("no Fanatec device", connectIt);
}

// The USB interface of the base's HID device, else the first HID interface.
const USBInterfaceFacts* hidInterface(const DevicePath& path) {
  for (const USBInterfaceFacts& interface : path.usb->interfaces) {
    if (!interface.isHID) continue;
    if (path.hid == nullptr || path.hid->usbInterface == interface.name) return &interface;
  }
  return nullptr;
}

Verdict judgeOtherDriver(const USBInterfaceFacts& interface) {
  const std::string finding =
      fmt::format("{} serves its interface {}, not usbhid", interface.driver, interface.name);
  if (interface.driver == "usbfs") {
    return Verdict::fail(finding, fmt::format("A program or a virtual machine has taken the base "
                                              "away from the system: end it, then {}.",
                                              replug));
  }
  return Verdict::fail(
      finding,
      CommandStep{"Give it to usbhid",
                  fmt::format("echo {0} | sudo tee /sys/bus/usb/drivers/{1}/unbind && echo {0} | "
                              "sudo tee /sys/bus/usb/drivers/usbhid/bind",
                              interface.name, interface.driver)});
}

Verdict judgeInterface(const USBInterfaceFacts& interface, const HIDFacts* hid) {
  if (interface.driver.empty()) {
    return Verdict::fail(fmt::format("no driver serves its interface {}", interface.name),
                         CommandStep{loadDriver(), "sudo modprobe usbhid"});
  }
  if (interface.driver != usbDriver) return judgeOtherDriver(interface);
  if (hid == nullptr) {
    return Verdict::fail(
        fmt::format("usbhid serves its interface {}, but has made no HID device", interface.name),
        CommandStep{fmt::format("Switch the base off and on, or {}. The kernel says why", replug),
                    "sudo dmesg | grep -i hid"});
  }
  return Verdict::pass(fmt::format("{}, {}", interface.driver, hid->driver));
}

Verdict judgeUSBDriver(const DevicePath& path) {
  const USBDeviceFacts& device = *path.usb;
  if (!device.isAuthorized) {
    return Verdict::fail(
        fmt::format("the system's policy keeps the device at {} from being used", device.name),
        CommandStep{"Allow it", fmt::format("echo 1 | sudo tee /sys/bus/usb/devices/{}/authorized",
                                            device.name)});
  }
  const USBInterfaceFacts* const interface = hidInterface(path);
  if (interface == nullptr) {
    return Verdict::fail(
        "the device has no HID interface",
        fmt::format("Switch the base to PC mode with its mode button, then {}.", replug));
  }
  return judgeInterface(*interface, path.hid);
}

bool isServed(const DevicePath& path) { return path.hid != nullptr && !path.hid->driver.empty(); }

}  // namespace

Verdict judgeBus(const DoctorFacts& facts, const DevicePath& path) {
  if (facts.machine.isSimulated) {
    if (path.base != nullptr) return Verdict::pass(path.base->displayName() + ", simulated");
    return Verdict::fail("the simulated base is unplugged", "Start again with --simulate.");
  }
  if (path.usb != nullptr) {
    return Verdict::pass(
        fmt::format("{} at {}", nameOf(path.usb->productID, path.usb->product), path.usb->name));
  }
  if (path.hid != nullptr) {
    return Verdict::pass(nameOf(path.hid->productID, path.hid->product) +
                         ", not on USB: a virtual device");
  }
  if (path.base != nullptr) return Verdict::pass(path.base->displayName());
  return judgeMissing(facts.machine);
}

Verdict judgeDriver(const DoctorFacts& facts, const DevicePath& path) {
  if (path.isEmpty()) return Verdict::skip(noBaseReason);
  if (facts.machine.isSimulated) return Verdict::skip(simulatedReason);
  if (path.hid != nullptr && path.hid->driver.empty()) {
    return Verdict::fail(fmt::format("no driver serves the HID device {}", path.hid->name),
                         CommandStep{loadDriver(), "sudo modprobe hid-generic"});
  }
  if (path.usb != nullptr) return judgeUSBDriver(path);
  if (path.hid != nullptr) return Verdict::pass(path.hid->driver);
  return Verdict::fail(
      "the kernel does not show the device's driver",
      "The base is there without an entry in /sys: make /sys visible to this program.");
}

Verdict judgeNode(const DoctorFacts& facts, const DevicePath& path) {
  if (path.isEmpty()) return Verdict::skip(noBaseReason);
  if (facts.machine.isSimulated) return Verdict::skip(simulatedReason);
  if (!isServed(path)) return Verdict::skip(noDriverReason);
  if (!path.hid->node) {
    return Verdict::fail("the kernel has made no hidraw node",
                         "Use a kernel with CONFIG_HIDRAW, as distributions have it.");
  }
  const std::string& node = path.hid->node->path;
  if (path.node == nullptr) {
    if (facts.machine.sandbox) {
      return Verdict::fail(
          node + " is kept from this sandbox",
          CommandStep{"Outside of it, type", allowDevicesOutside(*facts.machine.sandbox),
                      fmt::format("If that does not help, {}.", replug)});
    }
    return Verdict::fail(
        node + " is missing",
        facts.machine.isContainer
            ? fmt::format("Pass the node into the container, such as with --device {}.", node)
            : fmt::format("To have the system make it, {}.", replug));
  }
  if (path.base == nullptr) {
    return Verdict::fail(node + " is there, but udev has not announced it",
                         CommandStep{"Have udev go through the devices again",
                                     "sudo udevadm trigger && sudo udevadm settle"});
  }
  return Verdict::pass(node);
}

}  // namespace quorvane
