#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "hid/linux/system_files.h"
#include "hid/survey.h"

namespace quorvane {

// One lock of the kernel's list that a process took on a file as a whole.
struct FileLock {
  std::int64_t process = 0;
  bool isExclusive = false;
  std::uint32_t major = 0;  // of the file system's device
  std::uint32_t minor = 0;
  std::uint64_t inode = 0;

  bool operator==(const FileLock&) const = default;
};

// Those in the text of /proc/locks. Locks that are only waited for are none.
std::vector<FileLock> parseFileLocks(std::string_view text);

// Who has which nodes open, besides the process `self`. Looks once through all processes.
class NodeHolders {
 public:
  NodeHolders(const SystemFiles& system, std::int64_t self, const std::vector<std::string>& nodes);

  // By process.
  std::vector<NodeHolder> of(const std::string& node) const;

  // Whether every process could be looked into.
  bool areAllKnown() const { return areAllKnown_; }

 private:
  struct Opening {
    std::string node;
    std::int64_t process = 0;
    bool isExclusive = false;
  };

  void lookInto(const std::string& process, const std::vector<std::string>& nodes);
  void addLocks(const std::vector<std::string>& nodes);
  void add(const std::string& node, std::int64_t process, bool isExclusive);

  const SystemFiles& system_;
  const std::int64_t self_;
  std::vector<Opening> openings_;
  std::size_t descriptors_ = 0;  // looked at so far
  bool areAllKnown_ = true;
};

}  // namespace quorvane
