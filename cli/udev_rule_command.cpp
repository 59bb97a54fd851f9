#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "cli/udev_rule.h"
#include "cli/udev_rule_change.h"
#include "doctor/sandbox.h"
#include "platform/own_udev_rule.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

Json ruleJson() { return {{"file", ownRuleFile}, {"rule", udevRuleText()}}; }

void printRule(const CommandContext& context) {
  if (context.options.json) {
    printJson(context.world, ruleJson());
  } else {
    printLinesTo(context.world.out, udevRuleText());
  }
}

// The facts about the machine. Throws for a simulated one, whose rules cannot be changed.
MachineFacts requireOwnMachine(const World& world) {
  MachineFacts machine = world.survey.take(Fanatec::vendorID);
  if (machine.isSimulated) {
    throw UsageError("A simulated base needs no rule: leave out --simulate");
  }
  if (machine.sandbox) {
    throw CommandError(
        "fileFailed",
        fmt::format("This program runs in a sandbox, which has no udev. Type outside of it: {}",
                    installRuleOutside(*machine.sandbox)));
  }
  return machine;
}

// The vendor's nodes, as paths for udevadm.
std::vector<std::string> nodesBelowSys(const MachineFacts& machine) {
  std::vector<std::string> result;
  for (const HIDFacts& device : machine.hid) {
    if (!device.node) continue;
    const auto name = std::filesystem::path(device.node->path).filename();
    result.push_back("/sys/class/hidraw/" + name.string());
  }
  return result;
}

// Whether the permission to open exists. Any other error counts as such: another program may have
// the base open exclusively.
bool mayOpen(const HIDDeviceInfo& base) {
  return base.device->open(false).code != HIDReturnCode::notPermitted;
}

struct Trial {
  std::string node;
  bool opens = false;
};

std::vector<Trial> tryBases(const CommandContext& context) {
  std::vector<Trial> trials;
  for (const HIDDeviceInfo& base : namedBases(context)) {
    trials.push_back({base.device->node(), mayOpen(base)});
  }
  return trials;
}

bool doAllOpen(const std::vector<Trial>& trials) {
  return std::all_of(trials.begin(), trials.end(), [](const Trial& trial) { return trial.opens; });
}

void printInstallation(std::FILE* out, const RuleInstallation& installation) {
  if (installation.change == "served") {
    printTo(out, "The rule in {} is at work already; nothing to install\n", installation.file);
  } else if (installation.change == "present") {
    printTo(out, "The rule is in {} already\n", installation.file);
  } else {
    printTo(out, "{} {}\n", installation.change == "replaced" ? "Replaced" : "Installed",
            installation.file);
  }
  if (installation.keepListFile.empty()) return;
  printTo(out, "{} keeps it when the system is updated\n", installation.keepListFile);
}

void printTrials(const World& world, const std::vector<Trial>& trials) {
  const bool isRoot = world.rootAccess.caller().isRoot;
  if (trials.empty()) printTo(world.out, "No base is attached to try it with\n");
  for (const Trial& trial : trials) {
    if (!trial.opens) {
      printTo(world.err, "{} still does not open. The reason is told by: quorvanectl doctor\n",
              oneLine(trial.node));
    } else if (isRoot) {
      printTo(world.out,
              "{} opens for root; whether it does for you is told by: quorvanectl devices\n",
              oneLine(trial.node));
    } else {
      printTo(world.out, "{} opens now\n", oneLine(trial.node));
    }
  }
}

Json installationJson(const RuleInstallation& installation, const std::vector<Trial>& trials) {
  Json document = ruleJson();
  document["file"] = installation.file;
  document["change"] = installation.change;
  document["keepList"] =
      installation.keepListFile.empty() ? Json() : Json(installation.keepListFile);
  document["bases"] = Json::array();
  for (const Trial& trial : trials) {
    document["bases"].push_back({{"node", trial.node}, {"opens", trial.opens}});
  }
  return document;
}

ExitStatus install(const CommandContext& context) {
  const World& world = context.world;
  const MachineFacts machine = requireOwnMachine(world);
  const bool mustApply = !doAllOpen(tryBases(context));
  const RuleInstallation installation =
      installUdevRule(world.rootAccess, nodesBelowSys(machine), mustApply);
  const std::vector<Trial> trials = tryBases(context);
  if (context.options.json) {
    printJson(world, installationJson(installation, trials));
  } else {
    printInstallation(world.out, installation);
    printTrials(world, trials);
  }
  return doAllOpen(trials) ? ExitStatus::done : ExitStatus::failed;
}

void printRemoval(std::FILE* out, const RuleRemoval& removal) {
  if (removal.removed.empty()) printTo(out, "There is no {} to remove\n", ownRuleFile);
  for (const std::string& file : removal.removed) printTo(out, "Removed {}\n", file);
  if (!removal.remaining.empty()) {
    printTo(out, "The rule in {} stays at work: remove the package that brought it\n",
            removal.remaining);
  } else if (!removal.removed.empty()) {
    printTo(out, "A base that is attached may stay open to you until it is plugged in again\n");
  }
}

ExitStatus remove(const CommandContext& context) {
  const World& world = context.world;
  requireOwnMachine(world);
  const RuleRemoval removal = removeUdevRule(world.rootAccess);
  if (context.options.json) {
    Json document = ruleJson();
    document["change"] = removal.removed.empty() ? "absent" : "removed";
    document["removed"] = removal.removed;
    document["servedBy"] = removal.remaining.empty() ? Json() : Json(removal.remaining);
    printJson(world, document);
  } else {
    printRemoval(world.out, removal);
  }
  return ExitStatus::done;
}

}  // namespace

ExitStatus udevRuleCommand(const CommandContext& context, const UdevRuleWish& wish) {
  if (wish.installs && wish.removes) throw UsageError("Give --install or --remove, not both");
  if (wish.installs) return install(context);
  if (wish.removes) return remove(context);
  printRule(context);
  return ExitStatus::done;
}

}  // namespace quorvane
