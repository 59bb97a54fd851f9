#pragma once

namespace quorvane {

// POSIX shell scripts that root runs with /bin/sh -c to change the udev rule. They use only
// programs of the system, whatever PATH is. These are their exit statuses.
namespace RuleScriptStatus {
inline constexpr int done = 0;
inline constexpr int ruleNotWritten = 41;
inline constexpr int keepListNotWritten = 42;  // but the rule is installed
inline constexpr int notReloaded = 43;         // but the files are changed
inline constexpr int readOnly = 45;            // nothing was written
}  // namespace RuleScriptStatus

// Installs files atomically and has udev apply its rules to devices. Arguments: the path of
// udevadm, the USB vendor ID as four digits, the path and text of the rule, the path and text of
// the keep list, and the devices below /sys. A file with an empty path is not written.
extern const char* const installRuleScript;

// Removes files and has udev reload its rules. Arguments: the path of udevadm and the files.
extern const char* const removeRuleScript;

}  // namespace quorvane
