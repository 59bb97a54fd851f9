#pragma once

#include <string>
#include <vector>

#include "hid/linux/system_files.h"
#include "hid/linux/udev_rule_files.h"
#include "hid/survey.h"

namespace quorvane {

// Fills in the NodeFacts of HID devices: permissions, udev rules, and the processes other than
// `self` that have the node open.
void addNodeFacts(std::vector<HIDFacts>& devices, const SystemFiles& system,
                  const UdevRuleFiles& rules, std::int64_t self);

}  // namespace quorvane
