#pragma once

#include <QString>
#include <filesystem>
#include <optional>

// Names of files as the desktop passes them on. A path is any bytes; its URI is ASCII.
namespace quorvane::FileURI {

// Of an absolute path.
QString of(const std::filesystem::path& file);

// The absolute path; none for what is not a file of this machine.
std::optional<std::filesystem::path> toPath(const QString& uri);

}  // namespace quorvane::FileURI
