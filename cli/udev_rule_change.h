#pragma once

#include <string>
#include <vector>

#include "cli/root_access.h"

namespace quorvane {

// What installing the rule came to.
struct RuleInstallation {
  // In words for programs: "installed", "replaced" (a file of another content), "present" (the same
  // was there), "served" (by the file of a package, so none was needed).
  std::string change;
  std::string file;          // the one that udev reads
  std::string keepListFile;  // that keeps it over updates; empty: none is needed
};

// Puts the udev rule in place where no file has it, with a keep list where updates of the system
// would take it away, and has udev apply it to `devices`, paths below /sys. Root is asked for only
// if there is something to write, or with `mustApply`. Blocks while a password is asked for. Throws
// CommandError, in words that say what is in place, and std::system_error.
RuleInstallation installUdevRule(const RootAccess& access, const std::vector<std::string>& devices,
                                 bool mustApply);

struct RuleRemoval {
  std::vector<std::string> removed;  // the files; empty: none was there
  std::string remaining;             // the file that still gives the base; empty: none
};

// Takes away the files that installUdevRule makes. A package's rule stays. Asks for root if there
// is something to remove. Blocks and throws likewise.
RuleRemoval removeUdevRule(const RootAccess& access);

}  // namespace quorvane
