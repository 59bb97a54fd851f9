#pragma once

#include <string>
#include <vector>

#include "platform/system_files.h"
#include "platform/udev_rules.h"

namespace quorvane {

// A rules file that is overridden by one of the same name in a directory of higher priority.
struct HiddenRuleFile {
  UdevRuleFile file;
  std::string hiddenBy;
  bool isMask = false;  // that file is empty, or a link to /dev/null
};

struct UdevRuleFiles {
  std::vector<UdevRuleFile> read;  // the files that udev reads, in its order
  std::vector<HiddenRuleFile> hidden;
};

// The rules files of a system, collected from udev's directories.
UdevRuleFiles collectUdevRules(const SystemFiles& system);

}  // namespace quorvane
