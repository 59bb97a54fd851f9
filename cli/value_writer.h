#pragma once

#include <vector>

#include "cli/assignments.h"
#include "cli/context.h"
#include "session/wheel_base.h"

namespace quorvane {

// Reads the base's menu, then writes the values in their order, each read back, and prints a
// receipt for each as it comes; or one document with all of them. A change counts from the value
// that was read last. A failure does not stop it. An interruption does, once the value in flight is
// done.
//
// Throws FanatecError when the menu cannot be read; nothing is written then.
ExitStatus writeValues(const CommandContext& context, const Interruption& interruption,
                       WheelBase& base, const std::vector<Assignment>& values);

}  // namespace quorvane
