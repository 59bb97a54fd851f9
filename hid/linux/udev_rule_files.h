#pragma once

#include <string>
#include <vector>

#include "hid/linux/system_files.h"
#include "hid/linux/udev_rules.h"

namespace quorvane {

// A file of rules that another of the same name, in a directory that comes first, hides.
struct HiddenRuleFile {
  UdevRuleFile file;
  std::string hiddenBy;
  bool isMask = false;  // the other one is empty, or a link to /dev/null
};

struct UdevRuleFiles {
  std::vector<UdevRuleFile> read;  // by udev, in its order
  std::vector<HiddenRuleFile> hidden;
};

// The rules of a system, as udev collects them from its directories.
UdevRuleFiles collectUdevRules(const SystemFiles& system);

}  // namespace quorvane
