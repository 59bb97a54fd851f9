#pragma once

#include <vector>

#include "cli/assignments.h"
#include "cli/context.h"
#include "session/wheel_base.h"

namespace quorvane {

// Reads the base's menu, then writes the values in their order, each verified by a read-back.
// Prints a receipt after each value, or with --json one document at the end. A change is relative
// to the value that was read last. A failure does not stop the rest; an interruption does, after
// the current value.
//
// Throws FanatecError if the menu cannot be read; nothing is written then.
ExitStatus writeValues(const CommandContext& context, const Interruption& interruption,
                       WheelBase& base, const std::vector<Assignment>& values);

}  // namespace quorvane
