#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "support/file.h"

namespace quorvane {

// Reads a file descriptor (a pipe, a terminal or a file) up to its end, and blocks until then.
// `name` stands for the path in errors. Throws FileError, also when there are more than `limit`
// bytes, which must be a multiple of 1 MiB.
std::string readToEnd(int descriptor, const std::filesystem::path& name, std::uint64_t limit);

// Like readToEnd() for a pipe with a path, such as that of a shell's <(command). None when the path
// is not that of a pipe, and when the pipe is empty and has no writer.
std::optional<std::string> readPipe(const std::filesystem::path& path, std::uint64_t limit);

}  // namespace quorvane
