#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// The commands of `quorvanectl presets`, with the same rules as in commands.h; they also throw
// FileError and DecodingError. `which` is a name or id as for presetNamed(). The file "-" is
// standard output, to which nothing else is printed then.

// The presets to list. All conditions must hold.
struct PresetFilter {
  std::string search;               // see PresetSearch
  std::optional<std::string> game;  // see isForGame()
};

ExitStatus listPresetsCommand(const CommandContext& context, const PresetFilter& filter);
ExitStatus showPresetCommand(const CommandContext& context, const std::string& which);

// With `isDryRun`, only prints what it would write.
ExitStatus applyPresetCommand(const CommandContext& context, const std::string& which,
                              bool isDryRun);

// The texts of a preset as they were typed; none for those that were not given.
struct PresetTexts {
  std::optional<std::string> name;
  std::optional<std::string> game;
  std::optional<std::string> source;
  std::optional<std::string> notes;
};

// Saves the base's current menu under the name in `texts`; with `replace`, over the user's own
// preset of that name, which keeps its texts that are not given.
ExitStatus savePresetCommand(const CommandContext& context, const PresetTexts& texts, bool replace);

// Changes the given texts of one of the user's presets.
ExitStatus editPresetCommand(const CommandContext& context, const std::string& which,
                             const PresetTexts& texts);

// Copies a preset: one of the user's to the place after it, a built-in one to the end. Without a
// name, makes one up.
ExitStatus duplicatePresetCommand(const CommandContext& context, const std::string& which,
                                  const std::optional<std::string>& name);

// The end of a move. Exactly one must be set.
struct PresetPlace {
  std::optional<std::string> before;  // a preset, as `which`
  std::optional<std::string> after;
  bool first = false;
  bool last = false;
};

// Moves one of the user's presets in the list.
ExitStatus movePresetCommand(const CommandContext& context, const std::string& which,
                             const PresetPlace& place);

ExitStatus deletePresetCommand(const CommandContext& context, const std::string& which);

// Lists the former versions of the user's presets, the latest first.
ExitStatus presetVersionsCommand(const CommandContext& context);

// Replaces all of the user's presets by those of a version; refuses without `yes`.
ExitStatus restorePresetsCommand(const CommandContext& context, const std::string& number,
                                 bool yes);

// The file "-" is standard input. Blocks until the end of a pipe.
ExitStatus importPresetsCommand(const CommandContext& context,
                                const std::vector<std::string>& files);

// Adds one preset of the settings in a text, see settingsInText(), and says what was not
// understood, which becomes the preset's notes. Takes exactly one file; "-" is standard input.
// Without a name, the preset is named after the file.
ExitStatus importPresetTextCommand(const CommandContext& context,
                                   const std::vector<std::string>& files,
                                   const std::optional<std::string>& name);

// Without names: all of the user's own. Throws FileError if the file exists, unless `replace` is
// set; so does sharing.
ExitStatus exportPresetsCommand(const CommandContext& context, const std::string& file,
                                const std::vector<std::string>& which, bool replace);

// Without a name: the base's current menu.
ExitStatus sharePresetCommand(const CommandContext& context, const std::string& file,
                              const std::optional<std::string>& which, bool replace);

}  // namespace quorvane
