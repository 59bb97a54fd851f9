#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// The commands. Each prints its result and returns the exit status; what goes wrong is thrown:
// FanatecError or std::system_error from the device, UsageError for wrong words.

ExitStatus devicesCommand(const CommandContext& context);
ExitStatus readCommand(const CommandContext& context);
ExitStatus setCommand(const CommandContext& context, const std::vector<std::string>& words);
ExitStatus selectCommand(const CommandContext& context, std::int64_t set);

// Shows the mode; with "standard" or "advanced", switches to it first.
ExitStatus modeCommand(const CommandContext& context, const std::optional<std::string>& mode);

ExitStatus rotationCommand(const CommandContext& context, std::int64_t degrees);
ExitStatus rawCommand(const CommandContext& context, const std::vector<std::string>& words);
ExitStatus factoryResetCommand(const CommandContext& context, bool yes);
ExitStatus usbResetCommand(const CommandContext& context);

// Runs until interrupted.
ExitStatus monitorCommand(const CommandContext& context);

// Shows what keeps a base from working; fails when there is something. With a file, writes a report
// to it as well; "-" is standard output, which then carries nothing else. Throws FileError.
ExitStatus doctorCommand(const CommandContext& context, const std::string& report);

ExitStatus udevRuleCommand(const CommandContext& context);

}  // namespace quorvane
