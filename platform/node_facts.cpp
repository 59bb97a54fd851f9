#include "platform/node_facts.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "platform/access_list.h"
#include "platform/fields.h"
#include "platform/node_holders.h"
#include "protocol/product.h"

namespace quorvane {
namespace {

constexpr std::uint32_t permissionBits = 07777;

std::string nameOfGroup(gid_t id) {
  group entry{};
  group* found = nullptr;
  std::array<char, 16384> texts{};
  if (::getgrgid_r(id, &entry, texts.data(), texts.size(), &found) != 0) return {};
  return found == nullptr ? std::string() : std::string(found->gr_name);
}

void addPermissions(NodeFacts& node, const SystemFiles& system) {
  const std::string place = system.place(node.path);
  struct stat status {};
  node.exists = ::stat(place.c_str(), &status) == 0;
  if (!node.exists) return;
  node.mode = status.st_mode & permissionBits;
  node.owner = status.st_uid;
  node.group = status.st_gid;
  node.groupName = nameOfGroup(status.st_gid);
  node.accessList = accessListOf(place);
  const auto may = [&](int mode) {
    return ::faccessat(AT_FDCWD, place.c_str(), mode, AT_EACCESS) == 0;
  };
  node.mayRead = may(R_OK);
  node.mayWrite = may(W_OK);
}

// The kernel's name for a node: "hidraw3".
std::string nameOf(const NodeFacts& node) { return std::filesystem::path(node.path).filename(); }

// From udev's database, which has a file for each device that udev has processed.
std::optional<bool> isTaggedForSeat(const NodeFacts& node, const SystemFiles& system) {
  const std::string number = system.line("/sys/class/hidraw/" + nameOf(node) + "/dev");
  const std::string known = "/run/udev/data/c" + number;
  if (number.empty() || !system.exists(known)) return std::nullopt;
  const std::string content = system.content(known);
  const auto lines = split(content, '\n');
  return std::find(lines.begin(), lines.end(), "G:uaccess") != lines.end();
}

// "3-1" of the interface "3-1:1.0".
std::string usbDeviceOf(const HIDFacts& device) {
  return device.usbInterface.substr(0, device.usbInterface.find(':'));
}

RuleSubject subjectOf(const HIDFacts& device) {
  RuleSubject subject;
  subject.node = nameOf(*device.node);
  subject.names = {subject.node, device.name};
  subject.subsystems = {"hidraw", "hid"};
  if (!device.usbInterface.empty()) {
    subject.names.push_back(device.usbInterface);
    subject.names.push_back(usbDeviceOf(device));
    subject.subsystems.emplace_back("usb");
    subject.vendorID = Fanatec::vendorHex;
    subject.productID = fmt::format("{:04x}", device.productID);
  }
  return subject;
}

void addRules(HIDFacts& device, const UdevRuleFiles& rules) {
  const RuleSubject subject = subjectOf(device);
  device.node->rules = rulesFor(subject, rules.read);
  for (const HiddenRuleFile& hidden : rules.hidden) {
    if (rulesFor(subject, {hidden.file}).empty()) continue;
    device.node->hiddenRules.push_back({hidden.file.path, hidden.hiddenBy, hidden.isMask});
  }
}

}  // namespace

void addNodeFacts(std::vector<HIDFacts>& devices, const SystemFiles& system,
                  const UdevRuleFiles& rules, std::int64_t self) {
  std::vector<std::string> paths;
  for (const HIDFacts& device : devices) {
    if (device.node) paths.push_back(device.node->path);
  }
  const NodeHolders holders(system, self, paths);
  for (HIDFacts& device : devices) {
    if (!device.node) continue;
    addPermissions(*device.node, system);
    addRules(device, rules);
    device.node->isTaggedForSeat = isTaggedForSeat(*device.node, system);
    device.node->holders = holders.of(device.node->path);
    device.node->areAllHoldersKnown = holders.areAllKnown();
  }
}

}  // namespace quorvane
