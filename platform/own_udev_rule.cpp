#include "platform/own_udev_rule.h"

#include <filesystem>

#include "platform/os_release.h"
#include "platform/udev_rule_files.h"

namespace quorvane {

std::string_view keepListText() {
  return "/etc/udev/rules.d/70-quorvane.rules\n"
         "/etc/atomic-update.conf.d/quorvane.conf\n";
}

bool needsKeepList(const SystemFiles& system) {
  return osReleaseField(system, "ID") == "steamos" || system.exists(keepListDirectory);
}

bool isTaken(const SystemFiles& system, std::string_view path) {
  return system.exists(path) || !system.link(path).empty();
}

std::string servingRuleFile(const SystemFiles& system) {
  const auto name = std::filesystem::path(ownRuleFile).filename();
  for (const UdevRuleFile& file : collectUdevRules(system).read) {
    if (std::filesystem::path(file.path).filename() == name && !file.text.empty()) return file.path;
  }
  return {};
}

bool isOwnRuleLost(const SystemFiles& system) {
  return system.exists(keepListFile) && !isTaken(system, ownRuleFile);
}

}  // namespace quorvane
