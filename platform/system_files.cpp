#include "platform/system_files.h"

#include <algorithm>

#include "support/file.h"

namespace quorvane {
namespace {

constexpr std::uint64_t longestFile = std::uint64_t{1} << 20;

}  // namespace

std::filesystem::path SystemFiles::place(std::string_view path) const {
  return root_ / std::filesystem::path(path).relative_path();
}

bool SystemFiles::exists(std::string_view path) const {
  std::error_code unknown;
  return std::filesystem::exists(place(path), unknown);
}

std::string SystemFiles::content(std::string_view path) const {
  try {
    return readFile(place(path), longestFile);
  } catch (const FileError&) {
    return {};
  }
}

std::string SystemFiles::line(std::string_view path) const {
  std::string text = content(path);
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

std::vector<std::string> SystemFiles::names(std::string_view directory) const {
  std::vector<std::string> names;
  std::error_code error;
  auto entry = std::filesystem::directory_iterator(place(directory), error);
  while (!error && entry != std::filesystem::directory_iterator()) {
    names.push_back(entry->path().filename());
    entry.increment(error);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string SystemFiles::link(std::string_view path) const {
  std::error_code unknown;
  return std::filesystem::read_symlink(place(path), unknown);
}

std::string SystemFiles::linkName(std::string_view path) const {
  return std::filesystem::path(link(path)).filename();
}

std::string SystemFiles::parentName(std::string_view path) const {
  std::error_code unknown;
  return std::filesystem::canonical(place(path), unknown).parent_path().filename();
}

}  // namespace quorvane
