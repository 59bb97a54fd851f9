#pragma once

#include <filesystem>
#include <string_view>

namespace quorvane::Fuzz {

// RAII: a new directory, in memory if the system supports that; the destructor deletes it with its
// content.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

  // The number of files in it whose names begin with `beginning`.
  std::size_t count(std::string_view beginning) const;

 private:
  std::filesystem::path path_;
};

void writeFile(const std::filesystem::path& file, std::string_view content);

}  // namespace quorvane::Fuzz
