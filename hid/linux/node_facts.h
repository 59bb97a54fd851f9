#pragma once

#include <string>
#include <vector>

#include "hid/linux/system_files.h"
#include "hid/linux/udev_rule_files.h"
#include "hid/survey.h"

namespace quorvane {

// Completes the nodes of HID devices: their permissions, what udev makes of them, and which
// programs besides the process `self` have them open.
void addNodeFacts(std::vector<HIDFacts>& devices, const SystemFiles& system,
                  const UdevRuleFiles& rules, std::int64_t self);

}  // namespace quorvane
