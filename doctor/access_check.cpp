#include "doctor/access_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "doctor/device_checks.h"
#include "doctor/sandbox.h"

namespace quorvane {
namespace {

constexpr const char* reload = "sudo udevadm control --reload && sudo udevadm trigger";
constexpr const char* ruleFile = "/etc/udev/rules.d/70-quorvane.rules";
constexpr std::uint32_t othersMayAll = 06;
constexpr std::uint32_t groupMayAll = 060;
constexpr std::uint32_t groupOrOthers = 066;

// Has udev apply its rules to the base again.
CommandStep replugOrTrigger(const char* afterwards = "") {
  return {"Unplug the base and plug it in again, or", "sudo udevadm trigger", afterwards};
}

// "FILE, line N"
std::string placeOf(const UdevRuleFacts& facts) {
  return fmt::format("{}, line {}", facts.rule.file, facts.rule.line);
}

// The combined effect of the rules for a node, in the order in which they run.
struct RuleOutcome {
  const UdevRuleFacts* granting = nullptr;  // grants access to the user at the seat, or to everyone
  const UdevRuleFacts* taking = nullptr;    // a later rule that revokes that
  const UdevRuleFacts* tooLate = nullptr;   // sets the tag after the access lists were made
  const UdevRuleFacts* grouping = nullptr;  // sets the group

  explicit RuleOutcome(const std::vector<UdevRuleFacts>& rules) {
    for (const UdevRuleFacts& rule : rules) apply(rule);
  }

  bool isForSeat() const { return granting != nullptr && granting->tagsForSeat; }

 private:
  void apply(const UdevRuleFacts& rule) {
    if (rule.tagsForSeat && !rule.isInTime) tooLate = &rule;
    if (!rule.group.empty()) grouping = &rule;
    const bool opens = rule.mode && (*rule.mode & othersMayAll) == othersMayAll;
    const bool closes = rule.mode && (*rule.mode & groupOrOthers) == 0;
    if ((rule.tagsForSeat && rule.isInTime) || opens) {
      if (taking != nullptr || !isAlways(granting) || isAlways(&rule)) granting = &rule;
      taking = nullptr;
    } else if (granting != nullptr && takesBack(rule, closes)) {
      taking = &rule;
    }
  }

  // Whether the rule runs on every event.
  static bool isAlways(const UdevRuleFacts* rule) {
    return rule != nullptr && rule->runsOnAdd && rule->runsOnChange;
  }

  bool takesBack(const UdevRuleFacts& rule, bool closes) const {
    return closes || (rule.untagsForSeat && granting->tagsForSeat);
  }
};

bool isMember(const UserFacts& user, std::uint32_t group) {
  return std::find(user.groups.begin(), user.groups.end(), group) != user.groups.end();
}

bool isListed(const NodeFacts& node, const UserFacts& user, bool asGroup) {
  return std::any_of(node.accessList.begin(), node.accessList.end(), [&](const auto& entry) {
    const bool isMeant = asGroup ? isMember(user, entry.id) : entry.id == user.id;
    return entry.isGroup == asGroup && isMeant && entry.mayRead && entry.mayWrite;
  });
}

std::string byRule(const UdevRuleFacts* rule) {
  return rule == nullptr ? std::string() : fmt::format(" ({})", placeOf(*rule));
}

// Why the user has access.
std::string grantOf(const NodeFacts& node, const UserFacts& user) {
  const RuleOutcome rules(node.rules);
  if (user.id == 0) return "you are root";
  if (node.owner == user.id) return "you own it";
  if (isListed(node, user, false)) {
    return "its access list names you" + byRule(rules.isForSeat() ? rules.granting : nullptr);
  }
  if (isMember(user, node.group) && (node.mode & groupMayAll) == groupMayAll) {
    return fmt::format("you are in its group {}{}",
                       node.groupName.empty() ? std::to_string(node.group) : node.groupName,
                       byRule(rules.grouping));
  }
  if (isListed(node, user, true)) return "its access list names a group of yours";
  return "everyone may" + byRule(rules.granting);
}

// The file's path with the number 70, which runs before 73-seat-late.rules.
std::string renumbered(const std::string& file) {
  const std::filesystem::path path(file);
  std::string name = path.filename();
  name.erase(0, std::min(name.find_first_not_of("0123456789-"), name.size()));
  return path.parent_path() / ("70-" + name);
}

Verdict judgeHidden(const HiddenRules& hidden) {
  return Verdict::fail(
      fmt::format("{} hides the rule in {}", hidden.hiddenBy, hidden.file),
      hidden.isMask
          ? CommandStep{"Remove what hides it",
                        fmt::format("sudo rm {} && {}", hidden.hiddenBy, reload)}
          : CommandStep{"Rename it, so that both are read",
                        fmt::format("sudo mv {0} {1}/69-local.rules && {2}", hidden.hiddenBy,
                                    std::filesystem::path(hidden.hiddenBy).parent_path().string(),
                                    reload)});
}

// There is no rule for the node.
Verdict judgeMissingRule(const NodeFacts& node, const MachineFacts& machine) {
  if (machine.isRuleLost) {
    return Verdict::fail(
        fmt::format("the rule {} is gone, as an update of the system can do", ruleFile),
        CommandStep{"Install it again", machine.sandbox ? installRuleOutside(*machine.sandbox)
                                                        : "quorvanectl udev-rule --install"});
  }
  if (machine.sandbox) {
    return Verdict::fail(
        machine.sandbox->showsHostRules
            ? fmt::format("no udev rule outside of this sandbox gives you {}", node.path)
            : fmt::format("{} is not yours to read and write, and this sandbox does not show the "
                          "udev rules outside of it",
                          node.path),
        CommandStep{"Install the rule", installRuleOutside(*machine.sandbox)});
  }
  return Verdict::fail(
      fmt::format("no udev rule gives you {}", node.path),
      CommandStep{"Type quorvanectl udev-rule --install, or do the same by hand. Install the rule",
                  fmt::format("quorvanectl udev-rule | sudo tee {} && {}", ruleFile, reload)});
}

// No matching udev rule grants access; find out why.
Verdict judgeWithoutRule(const NodeFacts& node, const RuleOutcome& rules,
                         const MachineFacts& machine) {
  const UserFacts& user = machine.user;
  if (rules.tooLate != nullptr) {
    const std::string& file = rules.tooLate->rule.file;
    return Verdict::fail(
        fmt::format("the rule in {} comes too late: access lists are made by 73-seat-late.rules",
                    placeOf(*rules.tooLate)),
        CommandStep{"Give it a number below 73",
                    fmt::format("sudo mv {} {} && {}", file, renumbered(file), reload)});
  }
  if (rules.grouping != nullptr && node.groupName == rules.grouping->group &&
      !isMember(user, node.group)) {
    return Verdict::fail(fmt::format("{} gives {} to the group {}, which you are not in",
                                     placeOf(*rules.grouping), node.path, node.groupName),
                         CommandStep{"Join the group, then log in again",
                                     fmt::format("sudo usermod -aG {} $USER", node.groupName)});
  }
  if (rules.grouping != nullptr) {
    return Verdict::fail(fmt::format("{} gives {} to the group {}, but has not done so yet",
                                     placeOf(*rules.grouping), node.path, rules.grouping->group),
                         replugOrTrigger());
  }
  if (!node.hiddenRules.empty()) return judgeHidden(node.hiddenRules.front());
  return judgeMissingRule(node, machine);
}

// The rule sets the seat's tag only on some events.
Verdict judgeHalfRule(const UdevRuleFacts& rule) {
  if (rule.runsOnAdd) {
    return Verdict::fail(
        fmt::format("the rule in {} runs only when the base is added (ACTION==\"add\"): since "
                    "systemd 258 the access comes with change events",
                    placeOf(rule)),
        CommandStep{"Have it run on changes too, without ACTION==\"add\", then", reload});
  }
  return Verdict::fail(
      fmt::format(
          "the rule in {} runs only when the base changes (ACTION==\"change\"), not when it "
          "is added",
          placeOf(rule)),
      CommandStep{"Have it run on both, without ACTION==\"change\", then", reload});
}

// A rule grants access to the user at the seat, but this user has none; find out why.
Verdict judgeSeat(const NodeFacts& node, const UdevRuleFacts& rule, const MachineFacts& machine) {
  constexpr const char* viaGroup =
      "have a rule of your own give the node to a group of yours, with GROUP=\"...\" and "
      "MODE=\"0660\".";
  if (!machine.seatedUsers && machine.sandbox) {
    return Verdict::fail(
        fmt::format("outside of this sandbox, {} gives {} to whoever sits at the machine, but you "
                    "may not open it",
                    placeOf(rule), node.path),
        replugOrTrigger("Log in at the machine itself, not over the network."));
  }
  if (!machine.seatedUsers) {
    return Verdict::fail(
        fmt::format("{} gives {} to whoever sits at the machine, but nothing here keeps track of "
                    "that",
                    placeOf(rule), node.path),
        fmt::format("Use a system with logind, or {}", viaGroup));
  }
  const auto& seated = *machine.seatedUsers;
  if (std::find(seated.begin(), seated.end(), machine.user.id) == seated.end()) {
    return Verdict::fail(
        fmt::format("{} gives {} to whoever sits at the machine: not to you", placeOf(rule),
                    node.path),
        fmt::format("Log in at the machine itself, not over the network. Or {}", viaGroup));
  }
  if (!rule.runsOnAdd || !rule.runsOnChange) return judgeHalfRule(rule);
  if (node.isTaggedForSeat != true) {
    return Verdict::fail(
        fmt::format("the rule in {} was not there yet when the base was plugged in", placeOf(rule)),
        replugOrTrigger());
  }
  return Verdict::fail(fmt::format("{} should have given you {}, but it has not got the access "
                                   "list",
                                   placeOf(rule), node.path),
                       replugOrTrigger("If that does not help, restart the computer."));
}

Verdict judgeDenied(const NodeFacts& node, const MachineFacts& machine) {
  if (!machine.hasUdev && !machine.sandbox) {
    return Verdict::fail(
        fmt::format("{} is not yours to read and write, and no udev runs here to change that",
                    node.path),
        CommandStep{fmt::format("{} give yourself the node",
                                machine.isContainer ? "Outside of this container," : "By hand,"),
                    fmt::format("sudo setfacl -m u:$USER:rw {}", node.path)});
  }
  const RuleOutcome rules(node.rules);
  if (rules.granting == nullptr) return judgeWithoutRule(node, rules, machine);
  if (rules.taking != nullptr) {
    return Verdict::fail(
        fmt::format("two rules conflict: {} gives you {}, {} takes it away",
                    placeOf(*rules.granting), node.path, placeOf(*rules.taking)),
        CommandStep{fmt::format("Remove the second one ({}), then", rules.taking->rule.file),
                    reload});
  }
  if (rules.isForSeat()) return judgeSeat(node, *rules.granting, machine);
  return Verdict::fail(
      fmt::format("the rule in {} has not been applied to {}", placeOf(*rules.granting), node.path),
      replugOrTrigger());
}

}  // namespace

Verdict judgeAccess(const DoctorFacts& facts, const DevicePath& path) {
  if (path.isEmpty()) return Verdict::skip(noBaseReason);
  const bool isRefused = facts.answers.opening == BaseAnswers::Opening::notPermitted;
  if (facts.machine.isSimulated && isRefused) {
    return Verdict::fail("the simulated base refuses to be opened", "Simulate one that does not.");
  }
  if (facts.machine.isSimulated) return Verdict::skip(simulatedReason);
  if (path.node == nullptr) return Verdict::skip("there is no node to open");
  const NodeFacts& node = *path.node;
  if (!node.mayRead || !node.mayWrite) return judgeDenied(node, facts.machine);
  if (isRefused) {
    const std::string finding =
        fmt::format("the permissions of {} allow it, but opening it is refused", node.path);
    if (facts.machine.sandbox) {
      return Verdict::fail(finding, CommandStep{"Outside of the sandbox, type",
                                                allowDevicesOutside(*facts.machine.sandbox)});
    }
    return Verdict::fail(
        finding,
        facts.machine.isContainer
            ? fmt::format("Allow this container the device: pass it with --device {}.", node.path)
            : "A sandbox or a security policy keeps the base away: allow this program devices.");
  }
  return Verdict::pass(
      fmt::format("you may read and write {}: {}", node.path, grantOf(node, facts.machine.user)));
}

}  // namespace quorvane
