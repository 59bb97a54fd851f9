#include "platform/system_survey.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "platform/fields.h"
#include "platform/node_facts.h"
#include "platform/os_release.h"
#include "platform/own_udev_rule.h"
#include "platform/sysfs_facts.h"
#include "platform/udev_rule_files.h"
#include "support/text.h"
#include "support/user_directories.h"

namespace quorvane {
namespace {

bool isContainer(const SystemFiles& system) {
  constexpr std::array<const char*, 3> marks{"/run/systemd/container", "/run/.containerenv",
                                             "/.dockerenv"};
  return std::any_of(marks.begin(), marks.end(),
                     [&](const char* mark) { return system.exists(mark); });
}

std::optional<SandboxFacts> sandbox(const SystemFiles& system) {
  constexpr const char* mark = "/.flatpak-info";
  if (!system.exists(mark)) return std::nullopt;
  return SandboxFacts{
      oneLine(assignedValue(system.content(mark), "name")),
      system.exists("/run/host/etc") && system.exists("/run/host/usr/lib/udev/rules.d")};
}

// The files of the host, as far as a sandbox shows them.
SystemFiles hostOf(const SystemFiles& system, bool isSandboxed) {
  return isSandboxed ? SystemFiles(system.place("/run/host")) : system;
}

std::optional<std::vector<std::uint32_t>> seatedUsers(const SystemFiles& system) {
  const std::string seats = "/run/systemd/seats/";
  if (!system.exists(seats)) return std::nullopt;
  std::vector<std::uint32_t> users;
  for (const std::string& seat : system.names(seats)) {
    const auto user = parseInteger(assignedValue(system.content(seats + seat), "ACTIVE_UID"));
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
  MachineFacts machine;
  machine.sandbox = sandbox(system_);
  const SystemFiles host = hostOf(system_, machine.sandbox.has_value());
  const UdevRuleFiles rules = collectUdevRules(host);
  machine.isRuleLost = isOwnRuleLost(host);
  machine.hasUSB = system_.exists("/sys/bus/usb");
  machine.hasUdev = system_.exists("/run/udev");
  machine.isContainer = isContainer(system_);
  machine.seatedUsers = seatedUsers(system_);
  machine.user = thisUser();
  machine.kernel = system_.line("/proc/sys/kernel/osrelease");
  machine.distribution = oneLine(osReleaseField(system_, "PRETTY_NAME"));
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
