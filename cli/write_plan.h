#pragma once

#include <vector>

#include "cli/assignments.h"
#include "cli/context.h"
#include "session/wheel_base.h"

namespace quorvane {

// Reads the base's menu and prints what writeValues() would write for these values, one line each,
// or with --json one document. Writes nothing. Fails if a value could not be written. Throws
// FanatecError if the menu cannot be read.
ExitStatus printWritePlan(const CommandContext& context, WheelBase& base,
                          const std::vector<Assignment>& values);

}  // namespace quorvane
