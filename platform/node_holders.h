#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/node_holder.h"
#include "platform/system_files.h"

namespace quorvane {

// A lock on a whole file (flock) from the kernel's list of locks.
struct FileLock {
  std::int64_t process = 0;
  bool isExclusive = false;
  std::uint32_t major = 0;  // device number of the file system
  std::uint32_t minor = 0;
  std::uint64_t inode = 0;

  bool operator==(const FileLock&) const = default;
};

// Parses the text of /proc/locks. Leaves out locks that a process still waits for.
std::vector<FileLock> parseFileLocks(std::string_view text);

// Which processes other than `self` have which nodes open. The constructor scans all processes.
class NodeHolders {
 public:
  NodeHolders(const SystemFiles& system, std::int64_t self, const std::vector<std::string>& nodes);

  // Sorted by process ID.
  std::vector<NodeHolder> of(const std::string& node) const;

  // Whether every process could be inspected.
  bool areAllKnown() const { return areAllKnown_; }

  // Whether the node may be open other than once in `self`: true when another opening is found,
  // when a process of another person cannot be inspected, or when the scan is incomplete. Ignores
  // processes of root and of system accounts that cannot be inspected, and those of this user that
  // protect themselves, such as key agents: every desktop has some, and they do not use wheel
  // bases.
  bool mayOthersHave(const std::string& node) const;

 private:
  struct Opening {
    std::string node;
    std::int64_t process = 0;
    int count = 0;  // number of open file descriptors found in that process
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
  std::size_t descriptors_ = 0;  // inspected so far
  bool areAllKnown_ = true;
  bool arePeopleKnown_ = true;
};

// The other processes on this machine that have the device open; `node` is a file descriptor of it.
std::vector<NodeHolder> otherHoldersOf(int node);

// NodeHolders::mayOthersHave() for the device of the file descriptor `node`.
bool mayOthersHave(int node);

}  // namespace quorvane
