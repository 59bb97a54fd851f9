#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {

// Reads system files below a root directory, which is "/" except in tests. Paths are absolute, as
// if the root was "/". A missing or unreadable file gives an empty result.
class SystemFiles {
 public:
  explicit SystemFiles(std::filesystem::path root) : root_(std::move(root)) {}

  // The path below the root, for system calls.
  std::filesystem::path place(std::string_view path) const;

  bool exists(std::string_view path) const;

  // The content of a file; empty if it is longer than 1 MiB.
  std::string content(std::string_view path) const;

  // The content without line feeds at its end.
  std::string line(std::string_view path) const;

  // The names in a directory, in byte order.
  std::vector<std::string> names(std::string_view directory) const;

  // The target of a symbolic link, unresolved.
  std::string link(std::string_view path) const;

  // The last component of a symbolic link's target.
  std::string linkName(std::string_view path) const;

  // The name of the parent directory, after resolving symbolic links.
  std::string parentName(std::string_view path) const;

 private:
  std::filesystem::path root_;
};

}  // namespace quorvane
