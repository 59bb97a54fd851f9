#pragma once

#include <string>
#include <vector>

#include "cli/root_access.h"

namespace quorvane {

// The result of installing the rule.
struct RuleInstallation {
  // For JSON output: "installed", "replaced" (a file with other content), "present" (an identical
  // file), "served" (a package has the rule already; nothing was installed).
  std::string change;
  std::string file;          // the rule file that udev reads
  std::string keepListFile;  // keeps it across system updates; empty: not needed
};

// Installs the udev rule unless a file has it already, with a keep list if system updates would
// remove it, and has udev apply it to `devices`, paths below /sys. Becomes root only if there is
// something to write, or with `mustApply`. Blocks while the user is asked for a password. Throws
// CommandError, whose message says what was installed, and std::system_error.
RuleInstallation installUdevRule(const RootAccess& access, const std::vector<std::string>& devices,
                                 bool mustApply);

struct RuleRemoval {
  std::vector<std::string> removed;  // the files; empty: none existed
  std::string remaining;             // a rule file that still grants access; empty: none
};

// Removes the files that installUdevRule creates; a package's rule stays. Becomes root only if
// there is something to remove. Blocks and throws like installUdevRule.
RuleRemoval removeUdevRule(const RootAccess& access);

}  // namespace quorvane
