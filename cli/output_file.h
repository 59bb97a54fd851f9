#pragma once

#include <string>

namespace quorvane {

// For a command that is about to write `file`: throws FileError when a regular file of that name is
// there and is not to be replaced, since whoever names it may have meant another name.
void requireFreeName(const std::string& file, bool replace);

}  // namespace quorvane
