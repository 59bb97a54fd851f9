#pragma once

#include <QString>
#include <filesystem>
#include <optional>

// "file:" URIs, as the desktop passes them. A path may have any bytes; its URI is ASCII.
namespace quorvane::FileURI {

// The URI of an absolute path.
QString of(const std::filesystem::path& file);

// The absolute path; none if the URI is not a local file.
std::optional<std::filesystem::path> toPath(const QString& uri);

}  // namespace quorvane::FileURI
