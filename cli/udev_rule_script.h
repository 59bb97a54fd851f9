#pragma once

namespace quorvane {

// What root does for the udev rule: scripts of the POSIX shell, for /bin/sh -c. They use programs
// of the system alone, whatever the environment says, and end with one of these.
namespace RuleScriptStatus {
inline constexpr int done = 0;
inline constexpr int ruleNotWritten = 41;
inline constexpr int keepListNotWritten = 42;  // the rule is in place
inline constexpr int notReloaded = 43;         // the files are in place
inline constexpr int readOnly = 45;            // nothing was written
}  // namespace RuleScriptStatus

// Puts files in place, each as a whole, and has udev apply its rules to devices. Arguments: the
// path of udevadm, the USB vendor's four digits, the file of the rule and its text, the keep list
// and its text, and the devices below /sys. A file without a name is left alone.
extern const char* const installRuleScript;

// Takes the files away and has udev read its rules again. Arguments: the path of udevadm and the
// files.
extern const char* const removeRuleScript;

}  // namespace quorvane
