#pragma once

#include <string>
#include <string_view>

#include "platform/system_files.h"

namespace quorvane {

// The state of this program's udev rule on a system. Nothing here writes.

// The path of the rule when no package installs it.
inline constexpr const char* ownRuleFile = "/etc/udev/rules.d/70-quorvane.rules";

// Systems whose updates replace /etc, such as SteamOS, keep the files that are named by the lists
// in this directory. Our list names the rule and itself.
inline constexpr const char* keepListDirectory = "/etc/atomic-update.conf.d";
inline constexpr const char* keepListFile = "/etc/atomic-update.conf.d/quorvane.conf";
std::string_view keepListText();

// Whether system updates remove files that no list names.
bool needsKeepList(const SystemFiles& system);

// Whether the path exists, also as a dangling symbolic link.
bool isTaken(const SystemFiles& system, std::string_view path);

// The rules file with our rule's name that udev reads; empty when there is none. An empty file does
// not count: it masks the others.
std::string servingRuleFile(const SystemFiles& system);

// Whether the rule was installed and is gone: our keep list exists, the rule does not.
bool isOwnRuleLost(const SystemFiles& system);

}  // namespace quorvane
