#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// The commands of `quorvanectl presets`, under the same rules as those in commands.h; FileError and
// DecodingError are thrown besides. `which` is a word as presetNamed takes it. A file "-" is
// standard output, which then carries nothing but that file.

ExitStatus listPresetsCommand(const CommandContext& context);
ExitStatus showPresetCommand(const CommandContext& context, const std::string& which);
ExitStatus applyPresetCommand(const CommandContext& context, const std::string& which);

// Saves the base's present menu, with `replace` in place of the user's own preset of that name.
ExitStatus savePresetCommand(const CommandContext& context, const std::string& name, bool replace);

ExitStatus deletePresetCommand(const CommandContext& context, const std::string& which);

// A file "-" is standard input. Pipes are read to their end, which may take any time.
ExitStatus importPresetsCommand(const CommandContext& context,
                                const std::vector<std::string>& files);

// Without names: the user's own. A file that is there is replaced only when `replace` says so, else
// FileError; also when sharing.
ExitStatus exportPresetsCommand(const CommandContext& context, const std::string& file,
                                const std::vector<std::string>& which, bool replace);

// Without a name: the base's present menu.
ExitStatus sharePresetCommand(const CommandContext& context, const std::string& file,
                              const std::optional<std::string>& which, bool replace);

}  // namespace quorvane
