#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp is not in namespace std

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace quorvane {

// RAII: a new directory that every user may write to. The destructor removes it with its contents.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string name = testing::TempDir() + "quorvane-XXXXXX";
    EXPECT_NE(::mkdtemp(name.data()), nullptr);
    path_ = name;
    std::filesystem::permissions(path_, std::filesystem::perms::all);
  }
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

  // The names of its entries, except the lock file of SharedFile.
  std::set<std::string> names() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      if (entry.path().filename() != ".lock") names.insert(entry.path().filename());
    }
    return names;
  }

 private:
  std::filesystem::path path_;
};

inline void putFile(const std::filesystem::path& file, std::string_view content) {
  std::ofstream(file, std::ios::binary) << content;
}

inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  EXPECT_TRUE(stream.is_open()) << file;
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace quorvane
