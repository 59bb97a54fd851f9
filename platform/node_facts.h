#pragma once

#include <string>
#include <vector>

#include "platform/survey.h"
#include "platform/system_files.h"
#include "platform/udev_rule_files.h"

namespace quorvane {

// Fills in the NodeFacts of HID devices: permissions, udev rules, and the processes other than
// `self` that have the node open.
void addNodeFacts(std::vector<HIDFacts>& devices, const SystemFiles& system,
                  const UdevRuleFiles& rules, std::int64_t self);

}  // namespace quorvane
