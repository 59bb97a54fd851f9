#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvane {

// $HOME, else the user database's. Nothing that is not absolute counts.
std::optional<std::filesystem::path> homeDirectory();

// The name in the user database; empty for a user who is not in it.
std::string userName();

// Where programs keep this user's data: $XDG_DATA_HOME, else .local/share in the home directory.
// Nothing that is not absolute counts. None when there is no home.
std::optional<std::filesystem::path> userDataDirectory();

}  // namespace quorvane
