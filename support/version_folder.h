#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

#include "support/wall_time.h"

namespace quorvane {

// A directory with the former contents of one file. Each version is a file of its own, named by its
// number and time: "000012-20260301T093000Z.json". Everything else in the directory is left alone.
//
// All operations block for file input and output, and throw FileError.
class VersionFolder {
 public:
  // When one limit is exceeded, the oldest versions are removed.
  static constexpr std::size_t mostVersions = 20;
  static constexpr std::uint64_t mostBytes = std::uint64_t{8} << 20;  // 8 MiB, of all versions

  struct Version {
    std::uint32_t number = 0;  // one more than that of the version before
    WallSeconds time;          // when the content was kept
    std::filesystem::path file;
    std::uint64_t size = 0;  // in bytes
  };

  explicit VersionFolder(std::filesystem::path directory);

  // The oldest first; empty when there is no directory. What a version's file holds is not checked.
  std::vector<Version> versions() const;

  // Keeps a content as the latest version, durably, unless the latest version is equal to it.
  // Throws also when the content alone exceeds the limit. Only one program at a time may call it.
  void keep(std::string_view content, WallSeconds time) const;

 private:
  std::filesystem::path directory_;
};

}  // namespace quorvane
