#include "platform/sysfs_facts.h"

#include <fmt/format.h>

#include <optional>
#include <string>

#include "platform/device_facts.h"
#include "support/text.h"

namespace quorvane {
namespace {

const std::string usbDevices = "/sys/bus/usb/devices/";
const std::string hidDevices = "/sys/bus/hid/devices/";
constexpr std::uint32_t hidClass = 3;

std::optional<std::int64_t> hexLine(const SystemFiles& system, const std::string& path) {
  const auto number = parseHexNumber(system.line(path));
  return number ? std::optional<std::int64_t>(*number) : std::nullopt;
}

std::vector<USBInterfaceFacts> interfaces(const SystemFiles& system, const std::string& device) {
  std::vector<USBInterfaceFacts> result;
  for (const std::string& name : system.names(usbDevices + device)) {
    const std::string directory = fmt::format("{}{}/{}/", usbDevices, device, name);
    const auto interfaceClass = hexLine(system, directory + "bInterfaceClass");
    if (!interfaceClass) continue;
    result.push_back({name, *interfaceClass == hidClass, system.linkName(directory + "driver")});
  }
  return result;
}

// The name of a HID device's node; empty when the kernel created none.
std::string nodeName(const SystemFiles& system, const std::string& device) {
  const auto names = system.names(hidDevices + device + "/hidraw");
  return names.empty() ? std::string() : names.front();
}

HIDFacts describe(const SystemFiles& system, const std::string& name, const HIDUevent& uevent) {
  const std::string directory = hidDevices + name;
  HIDFacts facts;
  facts.name = name;
  facts.productID = uevent.productID;
  facts.product = oneLine(uevent.name);
  facts.serialNumber = uevent.uniq;
  const std::string parent = system.parentName(directory);
  if (!system.line(usbDevices + parent + "/bInterfaceClass").empty()) facts.usbInterface = parent;
  facts.driver = system.linkName(directory + "/driver");
  const std::string descriptor = system.content(directory + "/report_descriptor");
  facts.descriptor.assign(descriptor.begin(), descriptor.end());
  if (const std::string node = nodeName(system, name); !node.empty()) {
    facts.node.emplace().path = "/dev/" + node;
  }
  return facts;
}

}  // namespace

std::vector<USBDeviceFacts> usbFacts(const SystemFiles& system, std::int64_t vendorID) {
  std::vector<USBDeviceFacts> result;
  for (const std::string& name : system.names(usbDevices)) {
    const std::string directory = usbDevices + name + "/";
    if (hexLine(system, directory + "idVendor") != vendorID) continue;
    USBDeviceFacts facts;
    facts.name = name;
    facts.productID = hexLine(system, directory + "idProduct").value_or(0);
    facts.product = oneLine(system.line(directory + "product"));
    facts.serialNumber = system.line(directory + "serial");
    facts.isAuthorized = system.line(directory + "authorized") != "0";
    facts.interfaces = interfaces(system, name);
    result.push_back(std::move(facts));
  }
  return result;
}

std::vector<HIDFacts> hidFacts(const SystemFiles& system, std::int64_t vendorID) {
  std::vector<HIDFacts> result;
  for (const std::string& name : system.names(hidDevices)) {
    if (vendorInPath(name) != vendorID) continue;
    const HIDUevent uevent = parseHIDUevent(system.content(hidDevices + name + "/uevent"));
    result.push_back(describe(system, name, uevent));
  }
  return result;
}

}  // namespace quorvane
