#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {

// The files in which the system tells about itself, below a root that is "/" but in tests. Paths
// are absolute, as a program sees them. What is not there, or may not be read, is empty.
class SystemFiles {
 public:
  explicit SystemFiles(std::filesystem::path root) : root_(std::move(root)) {}

  // Where a path lies for the calls of the system.
  std::filesystem::path place(std::string_view path) const;

  bool exists(std::string_view path) const;

  // The content of a file, up to a limit that no such file gets near to.
  std::string content(std::string_view path) const;

  // The same without the line feed at its end.
  std::string line(std::string_view path) const;

  // The names in a directory, in the order of their bytes.
  std::vector<std::string> names(std::string_view directory) const;

  // What a symbolic link holds, as it stands.
  std::string link(std::string_view path) const;

  // The last part of what it holds.
  std::string linkName(std::string_view path) const;

  // The directory above, once links are followed; its name only.
  std::string parentName(std::string_view path) const;

 private:
  std::filesystem::path root_;
};

}  // namespace quorvane
