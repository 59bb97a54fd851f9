#pragma once

#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// The commands. Each prints its result and returns the exit status. Errors are thrown:
// FanatecError, CommandError or std::system_error from the device, UsageError for wrong words.

ExitStatus devicesCommand(const CommandContext& context);
ExitStatus readCommand(const CommandContext& context);

// Says what the setting with this code does. Needs no base.
ExitStatus explainCommand(const CommandContext& context, const std::string& code);

// Compares two sides, or the base with one side; see readDiffSides(). `failed` means that they
// differ, `wrongUsage` that they could not be compared or printed. Also throws FileError and
// DecodingError.
ExitStatus diffCommand(const CommandContext& context, const std::vector<std::string>& words);

// With `isDryRun`, only prints what it would write.
ExitStatus setCommand(const CommandContext& context, const std::vector<std::string>& words,
                      bool isDryRun);

// A set's number or, of the standard menu, its name: "A" is set 1, "C" is set 2 unless another
// custom set is active already.
ExitStatus selectCommand(const CommandContext& context, const std::string& word);

// Lists what was written to the base, the latest first. Opens no base.
ExitStatus historyCommand(const CommandContext& context);

// Writes the values before the last write back, or those of the last undo again. Leaves values
// alone that were changed meanwhile. Fails when there is nothing to undo or to redo, and when the
// base is in another set or mode. A dry run prints what would be written.
ExitStatus undoCommand(const CommandContext& context, bool isDryRun);
ExitStatus redoCommand(const CommandContext& context, bool isDryRun);

// Shows the mode; with "standard" or "advanced" in either case, switches to it first.
ExitStatus modeCommand(const CommandContext& context, const std::string& word);

ExitStatus rotationCommand(const CommandContext& context, const std::string& word);
ExitStatus rawCommand(const CommandContext& context, const std::vector<std::string>& words);
ExitStatus factoryResetCommand(const CommandContext& context, bool yes);
ExitStatus usbResetCommand(const CommandContext& context);

// Runs until interrupted.
ExitStatus monitorCommand(const CommandContext& context);

// Shows what keeps a base from working; fails if it finds something. Unless `report` is empty, also
// writes a report to that file; replaces an existing file only with `replace`. With "-" it prints
// only the report, to standard output. Throws FileError.
ExitStatus doctorCommand(const CommandContext& context, const std::string& report, bool replace);

struct UdevRuleWish {
  bool installs = false;
  bool removes = false;
};

// Prints the udev rule; or, as root, installs or removes it. After an installation, tries to open
// the attached bases and fails if the permission for one is missing.
ExitStatus udevRuleCommand(const CommandContext& context, const UdevRuleWish& wish);

}  // namespace quorvane
