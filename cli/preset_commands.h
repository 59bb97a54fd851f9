#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// The commands of `quorvanectl presets`, under the same rules as those in commands.h; FileError and
// DecodingError are thrown besides. `which` is a preset's name or id. A file "-" is standard
// output, which then carries nothing but that file.

ExitStatus listPresetsCommand(const CommandContext& context);
ExitStatus showPresetCommand(const CommandContext& context, const std::string& which);
ExitStatus applyPresetCommand(const CommandContext& context, const std::string& which);

// Saves the base's present menu.
ExitStatus savePresetCommand(const CommandContext& context, const std::string& name);

ExitStatus deletePresetCommand(const CommandContext& context, const std::string& which);
ExitStatus importPresetsCommand(const CommandContext& context,
                                const std::vector<std::string>& files);

// Without names: the user's own.
ExitStatus exportPresetsCommand(const CommandContext& context, const std::string& file,
                                const std::vector<std::string>& which);

// Without a name: the base's present menu.
ExitStatus sharePresetCommand(const CommandContext& context, const std::string& file,
                              const std::optional<std::string>& which);

}  // namespace quorvane
