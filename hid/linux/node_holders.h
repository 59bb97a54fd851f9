#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "hid/linux/system_files.h"
#include "hid/node_holder.h"

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

  // Whether somebody may have the node open besides one opening of `self`: another opening is
  // found, or another person runs programs that cannot be looked into, or it cannot be told who
  // runs what. Left out are the programs of root and of system accounts, and those of this user
  // that guard themselves from being looked into, such as agents that hold keys: every desktop has
  // some, and they have no business with a wheel base.
  bool mayOthersHave(const std::string& node) const;

 private:
  struct Opening {
    std::string node;
    std::int64_t process = 0;
    int count = 0;  // how often that process has it open, as far as known
    bool isExclusive = false;
    bool hasWriteLock = false;
  };

  void lookInto(const std::string& process, const std::vector<std::string>& nodes);
  void lookAt(const std::string& process, const std::string& descriptor,
              const std::vector<std::string>& nodes);
  void cannotLookInto(const std::string& process);
  bool hasWriteLock(const std::string& process, const std::string& descriptor) const;
  void addLocks(const std::vector<std::string>& nodes);
  Opening& openingOf(const std::string& node, std::int64_t process);

  const SystemFiles& system_;
  const std::int64_t self_;
  std::vector<Opening> openings_;
  std::size_t descriptors_ = 0;  // looked at so far
  bool areAllKnown_ = true;
  bool arePeopleKnown_ = true;
};

// The other processes of this machine that have open what is open here as `node`.
std::vector<NodeHolder> otherHoldersOf(int node);

// Whether somebody besides that one opening may have it open.
bool mayOthersHave(int node);

}  // namespace quorvane
