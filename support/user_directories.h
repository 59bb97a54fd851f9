#pragma once

#include <filesystem>
#include <optional>

namespace quorvane {

// Where programs keep this user's data: $XDG_DATA_HOME, else .local/share in the home directory
// ($HOME, else the user database's). Nothing that is not absolute counts. None when there is no
// home.
std::optional<std::filesystem::path> userDataDirectory();

}  // namespace quorvane
