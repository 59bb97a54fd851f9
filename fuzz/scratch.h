#pragma once

#include <filesystem>
#include <string_view>

namespace quorvane::Fuzz {

// A new directory, in memory where the system keeps one there; gone with everything in it when this
// is destroyed.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

  // The files in it whose names begin so.
  std::size_t count(std::string_view beginning) const;

 private:
  std::filesystem::path path_;
};

void writeFile(const std::filesystem::path& file, std::string_view content);

}  // namespace quorvane::Fuzz
