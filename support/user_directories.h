#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvane {

// $HOME, else the home directory in the user database. Relative paths are ignored.
std::optional<std::filesystem::path> homeDirectory();

// The login name in the user database; empty for a user without an entry.
std::string userName();

// The directory for the user's data: $XDG_DATA_HOME, else .local/share in the home directory.
// Relative paths are ignored. None when there is no home directory either.
std::optional<std::filesystem::path> userDataDirectory();

// The directory for the user's state, such as histories: $XDG_STATE_HOME, else .local/state in the
// home directory. Relative paths are ignored. None when there is no home directory either.
std::optional<std::filesystem::path> userStateDirectory();

}  // namespace quorvane
