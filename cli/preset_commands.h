#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// The commands of `quorvanectl presets`, with the same rules as in commands.h; they also throw
// FileError and DecodingError. `which` is a name or id as for presetNamed(). The file "-" is
// standard output, to which nothing else is printed then.

ExitStatus listPresetsCommand(const CommandContext& context);
ExitStatus showPresetCommand(const CommandContext& context, const std::string& which);
ExitStatus applyPresetCommand(const CommandContext& context, const std::string& which);

// Saves the base's current menu; with `replace`, over the user's own preset of that name.
ExitStatus savePresetCommand(const CommandContext& context, const std::string& name, bool replace);

ExitStatus deletePresetCommand(const CommandContext& context, const std::string& which);

// The file "-" is standard input. Blocks until the end of a pipe.
ExitStatus importPresetsCommand(const CommandContext& context,
                                const std::vector<std::string>& files);

// Without names: all of the user's own. Throws FileError if the file exists, unless `replace` is
// set; so does sharing.
ExitStatus exportPresetsCommand(const CommandContext& context, const std::string& file,
                                const std::vector<std::string>& which, bool replace);

// Without a name: the base's current menu.
ExitStatus sharePresetCommand(const CommandContext& context, const std::string& file,
                              const std::optional<std::string>& which, bool replace);

}  // namespace quorvane
