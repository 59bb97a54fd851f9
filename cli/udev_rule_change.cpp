#include "cli/udev_rule_change.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "cli/context.h"
#include "cli/udev_rule.h"
#include "cli/udev_rule_script.h"
#include "platform/own_udev_rule.h"
#include "protocol/product.h"

namespace quorvane {
namespace {

constexpr const char* installAgain = "quorvanectl udev-rule --install";
constexpr const char* removeAgain = "quorvanectl udev-rule --remove";

[[noreturn]] void fail(const std::string& message) { throw CommandError("fileFailed", message); }

std::string requireUdevadm(const RootAccess& access) {
  std::string udevadm = systemProgram(access, "udevadm");
  if (udevadm.empty()) {
    fail(
        "There is no udevadm here, so no udev either that would read the rule. In a container, "
        "type the command outside of it");
  }
  return udevadm;
}

// Throws CommandError unless the script succeeded completely.
void requireDone(const RootRun& run, const char* command) {
  if (!run.isAllowed) {
    fail(
        fmt::format("Nothing was changed: {} did not let you act as root. Try again, or ask who "
                    "administers this machine to type: {}",
                    run.asker, command));
  }
  switch (run.status) {
    case RuleScriptStatus::done:
      return;
    case RuleScriptStatus::readOnly:
      fail(
          fmt::format("Nothing was changed: the files below /etc are read-only here, even for "
                      "root. Make them writable and type again: {}",
                      command));
    case RuleScriptStatus::ruleNotWritten:
      fail(
          fmt::format("{} could not be changed, even by root. Look at what keeps it, then type "
                      "again: {}",
                      ownRuleFile, command));
    case RuleScriptStatus::keepListNotWritten:
      fail(
          fmt::format("The rule is in place, but {} could not be written: the next update of the "
                      "system may take the rule away. Type again after it: {}",
                      keepListFile, command));
    case RuleScriptStatus::notReloaded:
      fail("The files are changed, but udev could not be told. Restart the computer");
    default:
      fail(
          fmt::format("It is not known what was changed: what ran as root ended with status {}. "
                      "Look at it with: quorvanectl doctor",
                      run.status));
  }
}

// The result to report, and the files that have to be written for it.
struct Plan {
  RuleInstallation result;
  bool writesRule = false;
  bool writesList = false;
};

Plan planFor(const SystemFiles& system) {
  const std::string serving = servingRuleFile(system);
  Plan plan;
  plan.result.file = serving.empty() ? ownRuleFile : serving;
  if (plan.result.file != ownRuleFile) {
    plan.result.change = "served";
    return plan;
  }
  plan.writesRule = system.content(ownRuleFile) != udevRuleText();
  plan.result.change = !plan.writesRule               ? "present"
                       : isTaken(system, ownRuleFile) ? "replaced"
                                                      : "installed";
  if (!needsKeepList(system)) return plan;
  plan.result.keepListFile = keepListFile;
  plan.writesList = system.content(keepListFile) != keepListText();
  return plan;
}

}  // namespace

RuleInstallation installUdevRule(const RootAccess& access, const std::vector<std::string>& devices,
                                 bool mustApply) {
  const SystemFiles system(access.root);
  const Plan plan = planFor(system);
  if (!plan.writesRule && !plan.writesList && !mustApply) return plan.result;
  const auto place = [&](bool isWritten, const char* file) {
    return isWritten ? system.place(file).string() : std::string();
  };
  std::vector<std::string> arguments{requireUdevadm(access),
                                     std::string(Fanatec::vendorHex),
                                     place(plan.writesRule, ownRuleFile),
                                     std::string(udevRuleText()),
                                     place(plan.writesList, keepListFile),
                                     std::string(keepListText())};
  arguments.insert(arguments.end(), devices.begin(), devices.end());
  requireDone(runAsRoot(access, installRuleScript, arguments), installAgain);
  return plan.result;
}

RuleRemoval removeUdevRule(const RootAccess& access) {
  const SystemFiles system(access.root);
  RuleRemoval removal;
  std::vector<std::string> arguments{""};
  for (const char* const file : {ownRuleFile, keepListFile}) {
    if (!isTaken(system, file)) continue;
    removal.removed.emplace_back(file);
    arguments.push_back(system.place(file));
  }
  if (!removal.removed.empty()) {
    arguments.front() = requireUdevadm(access);
    requireDone(runAsRoot(access, removeRuleScript, arguments), removeAgain);
  }
  removal.remaining = servingRuleFile(system);
  return removal;
}

}  // namespace quorvane
