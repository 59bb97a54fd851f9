#include "hid/linux/system_survey.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "hid/linux/fields.h"
#include "hid/linux/node_facts.h"
#include "hid/linux/sysfs_facts.h"
#include "hid/linux/udev_rule_files.h"
#include "support/text.h"
#include "support/user_directories.h"

namespace quorvane {
namespace {

// The value of the first line "KEY=VALUE", without quotes around it.
std::string assigned(const std::string& text, std::string_view key) {
  for (std::string_view line : split(text, '\n')) {
    if (!line.starts_with(key) || line.substr(key.size()).substr(0, 1) != "=") continue;
    line.remove_prefix(key.size() + 1);
    if (line.size() >= 2 && line.front() == '"' && line.back() == '"') {
      line = line.substr(1, line.size() - 2);
    }
    return std::string(line);
  }
  return {};
}

std::string distribution(const SystemFiles& system) {
  for (const char* const file : {"/etc/os-release", "/usr/lib/os-release"}) {
    if (system.exists(file)) return oneLine(assigned(system.content(file), "PRETTY_NAME"));
  }
  return {};
}

bool isContainer(const SystemFiles& system) {
  constexpr std::array<const char*, 3> marks{"/run/systemd/container", "/run/.containerenv",
                                             "/.dockerenv"};
  return std::any_of(marks.begin(), marks.end(),
                     [&](const char* mark) { return system.exists(mark); });
}

std::optional<std::vector<std::uint32_t>> seatedUsers(const SystemFiles& system) {
  const std::string seats = "/run/systemd/seats/";
  if (!system.exists(seats)) return std::nullopt;
  std::vector<std::uint32_t> users;
  for (const std::string& seat : system.names(seats)) {
    const auto user = parseInteger(assigned(system.content(seats + seat), "ACTIVE_UID"));
    if (user) users.push_back(static_cast<std::uint32_t>(*user));
  }
  return users;
}

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : oneLine(value);
}

UserFacts thisUser() {
  UserFacts user;
  user.id = ::geteuid();
  user.groups.resize(static_cast<std::size_t>(std::max(::getgroups(0, nullptr), 0)));
  static_assert(sizeof(gid_t) == sizeof(std::uint32_t));
  const int count = ::getgroups(static_cast<int>(user.groups.size()), user.groups.data());
  user.groups.resize(static_cast<std::size_t>(std::max(count, 0)));
  user.groups.push_back(::getegid());
  user.name = userName();
  if (const auto home = homeDirectory()) user.home = *home;
  return user;
}

}  // namespace

MachineFacts SystemSurvey::take(std::int64_t vendorID) {
  const UdevRuleFiles rules = collectUdevRules(system_);
  MachineFacts machine;
  machine.hasUSB = system_.exists("/sys/bus/usb");
  machine.hasUdev = system_.exists("/run/udev");
  machine.isContainer = isContainer(system_);
  machine.seatedUsers = seatedUsers(system_);
  machine.user = thisUser();
  machine.kernel = system_.line("/proc/sys/kernel/osrelease");
  machine.distribution = distribution(system_);
  machine.sessionType = variable("XDG_SESSION_TYPE");
  machine.desktop = variable("XDG_CURRENT_DESKTOP");
  machine.usb = usbFacts(system_, vendorID);
  machine.hid = hidFacts(system_, vendorID);
  machine.vendorRules = vendorRules(rules.read);
  addNodeFacts(machine.hid, system_, rules, self_);
  return machine;
}

HIDSurvey& HIDSurvey::system() {
  static SystemSurvey survey("/", ::getpid());
  return survey;
}

}  // namespace quorvane
