#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "support/file.h"

namespace quorvane {

// What can be read from a descriptor until its end: of a pipe, a terminal or a file. Blocks until
// then. `name` is what errors call it. Throws FileError, also when it is longer than `limit` bytes,
// a multiple of 1 MiB.
std::string readToEnd(int descriptor, const std::filesystem::path& name, std::uint64_t limit);

// The same of a pipe that has a path, such as one of a shell's <(command). None when the path leads
// to anything else, and when the pipe is empty and nobody writes to it.
std::optional<std::string> readPipe(const std::filesystem::path& path, std::uint64_t limit);

}  // namespace quorvane
