#pragma once

#include <string>
#include <string_view>

#include "hid/linux/system_files.h"

namespace quorvane {

// The udev rule of this program as it stands on a system. Nothing here writes.

// Where the rule goes without a package.
inline constexpr const char* ownRuleFile = "/etc/udev/rules.d/70-quorvane.rules";

// Systems whose updates replace /etc, such as SteamOS, keep the files that lists in this directory
// name. Ours names the rule and itself.
inline constexpr const char* keepListDirectory = "/etc/atomic-update.conf.d";
inline constexpr const char* keepListFile = "/etc/atomic-update.conf.d/quorvane.conf";
std::string_view keepListText();

// Whether updates of the system take away what no list names.
bool needsKeepList(const SystemFiles& system);

// Whether the path leads to something, or is a symbolic link to nothing.
bool isTaken(const SystemFiles& system, std::string_view path);

// The file of rules, of those with the name of ours, that udev reads; empty: none. One without
// content is there to hide the others and is none.
std::string servingRuleFile(const SystemFiles& system);

// Whether the rule was there and is gone: a list keeps it over updates, and it does not exist.
bool isOwnRuleLost(const SystemFiles& system);

}  // namespace quorvane
