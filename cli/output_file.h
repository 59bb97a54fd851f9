#pragma once

#include <string>

namespace quorvane {

// Call before writing `file`. Without `replace`, throws FileError if a regular file of that name
// exists, to protect it from a mistyped name.
void requireFreeName(const std::string& file, bool replace);

}  // namespace quorvane
