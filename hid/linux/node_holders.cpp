#include "hid/linux/node_holders.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "hid/linux/fields.h"
#include "support/text.h"

namespace quorvane {
namespace {

// Enough for a desktop with everything open; more would take too long.
constexpr std::size_t mostDescriptors = 100'000;

// "1: FLOCK  ADVISORY  WRITE 3124 00:05:333 0 EOF"
std::optional<FileLock> parseFileLock(std::string_view line) {
  const auto fields = words(line);
  if (fields.size() < 6 || fields[1] != "FLOCK") return std::nullopt;
  const auto place = split(fields[5], ':');
  const auto process = parseInteger(fields[4]);
  if (place.size() != 3 || !process) return std::nullopt;
  const auto major = parseHexNumber(place[0]);
  const auto minor = parseHexNumber(place[1]);
  const auto inode = parseInteger(place[2]);
  if (!major || !minor || !inode) return std::nullopt;
  return FileLock{*process, fields[3] == "WRITE", *major, *minor,
                  static_cast<std::uint64_t>(*inode)};
}

bool isOn(const FileLock& lock, const struct stat& file) {
  return lock.major == major(file.st_dev) && lock.minor == minor(file.st_dev) &&
         lock.inode == file.st_ino;
}

}  // namespace

std::vector<FileLock> parseFileLocks(std::string_view text) {
  std::vector<FileLock> locks;
  for (const std::string_view line : split(text, '\n')) {
    if (const auto lock = parseFileLock(line)) locks.push_back(*lock);
  }
  return locks;
}

NodeHolders::NodeHolders(const SystemFiles& system, std::int64_t self,
                         const std::vector<std::string>& nodes)
    : system_(system), self_(self) {
  if (nodes.empty()) return;
  for (const std::string& process : system.names("/proc")) {
    const auto number = parseInteger(process);
    if (number && *number != self) lookInto(process, nodes);
  }
  addLocks(nodes);
}

std::vector<NodeHolder> NodeHolders::of(const std::string& node) const {
  std::vector<NodeHolder> holders;
  for (const Opening& opening : openings_) {
    if (opening.node != node) continue;
    const std::string name = "/proc/" + std::to_string(opening.process) + "/comm";
    holders.push_back({opening.process, oneLine(system_.line(name)), opening.isExclusive});
  }
  std::sort(holders.begin(), holders.end(),
            [](const auto& a, const auto& b) { return a.process < b.process; });
  return holders;
}

void NodeHolders::lookInto(const std::string& process, const std::vector<std::string>& nodes) {
  const std::string directory = "/proc/" + process + "/fd";
  std::error_code error;
  auto entry = std::filesystem::directory_iterator(system_.place(directory), error);
  // One that has ended meanwhile hides nothing.
  if (error && error != std::errc::no_such_file_or_directory) areAllKnown_ = false;
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    if (++descriptors_ > mostDescriptors) {
      areAllKnown_ = false;
      return;
    }
    const std::string target = system_.link(directory + "/" + entry->path().filename().string());
    if (std::find(nodes.begin(), nodes.end(), target) == nodes.end()) continue;
    add(target, *parseInteger(process), false);
  }
}

// Locks tell of the programs of other users as well.
void NodeHolders::addLocks(const std::vector<std::string>& nodes) {
  const auto locks = parseFileLocks(system_.content("/proc/locks"));
  for (const std::string& node : nodes) {
    struct stat file {};
    if (::stat(system_.place(node).c_str(), &file) != 0) continue;
    for (const FileLock& lock : locks) {
      if (lock.process != self_ && isOn(lock, file)) add(node, lock.process, lock.isExclusive);
    }
  }
}

void NodeHolders::add(const std::string& node, std::int64_t process, bool isExclusive) {
  const auto known = std::find_if(openings_.begin(), openings_.end(), [&](const Opening& opening) {
    return opening.node == node && opening.process == process;
  });
  if (known == openings_.end()) {
    openings_.push_back({node, process, isExclusive});
  } else {
    known->isExclusive = known->isExclusive || isExclusive;
  }
}

}  // namespace quorvane
