#include "platform/node_holders.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "platform/fields.h"
#include "support/text.h"

namespace quorvane {
namespace {

// A limit for the duration of the scan; a busy desktop has fewer.
constexpr std::size_t mostDescriptors = 100'000;

// The initial PID namespace, which shows all processes. A container has its own.
constexpr const char* wholeMachine = "pid:[4026531836]";

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

// "lock:	2: OFDLCK ADVISORY  WRITE -1 00:05:333 0 0", the write lock.
bool isWriteLock(std::string_view line) {
  const auto fields = words(line);
  return fields.size() >= 8 && fields[0].starts_with("lock:") && fields[1] == "OFDLCK" &&
         fields[3] == "WRITE" && fields[6] == "0" && fields[7] == "0";
}

// From "200 (game) T 1 ...". The name may contain any characters, so search from the end.
bool isStopped(std::string_view status) {
  const std::size_t end = status.rfind(") ");
  if (end == std::string_view::npos || end + 2 >= status.size()) return false;
  const char state = status[end + 2];
  return state == 'T' || state == 't';
}

// Whether an account may be a person's: not a system account, nor one of systemd's dynamic users
// for services.
bool isPersons(std::uint32_t user) {
  constexpr std::uint32_t firstPerson = 1000;
  constexpr std::uint32_t firstOfServices = 61184;
  constexpr std::uint32_t lastOfServices = 65519;
  return user >= firstPerson && (user < firstOfServices || user > lastOfServices);
}

// Other processes may have the node at another path (bind mount), but with the same name.
bool isNode(std::string_view target, std::string_view node) {
  if (target == node) return true;
  const auto name = [](std::string_view path) { return path.substr(path.rfind('/') + 1); };
  return node.starts_with("/dev/hidraw") && target.starts_with('/') && name(target) == name(node);
}

// Resolves the file descriptor: the path it was opened by may belong to another node by now.
std::string pathOf(const SystemFiles& system, int node) {
  return system.link("/proc/self/fd/" + std::to_string(node));
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
  // Process 1 is not visible where /proc shows only the user's own processes (hidepid).
  arePeopleKnown_ = system.exists("/proc/1") && system.link("/proc/self/ns/pid") == wholeMachine;
  for (const std::string& process : system.names("/proc")) {
    if (parseInteger(process)) lookInto(process, nodes);
  }
  addLocks(nodes);
}

std::vector<NodeHolder> NodeHolders::of(const std::string& node) const {
  std::vector<NodeHolder> holders;
  for (const Opening& opening : openings_) {
    if (opening.node != node || opening.process == self_) continue;
    const std::string process = "/proc/" + std::to_string(opening.process);
    holders.push_back({opening.process, oneLine(system_.line(process + "/comm")),
                       opening.isExclusive, opening.hasWriteLock,
                       isStopped(system_.line(process + "/stat"))});
  }
  std::sort(holders.begin(), holders.end(),
            [](const auto& a, const auto& b) { return a.process < b.process; });
  return holders;
}

bool NodeHolders::mayOthersHave(const std::string& node) const {
  return !arePeopleKnown_ ||
         std::any_of(openings_.begin(), openings_.end(), [&](const Opening& opening) {
           return opening.node == node && (opening.process != self_ || opening.count > 1);
         });
}

void NodeHolders::lookInto(const std::string& process, const std::vector<std::string>& nodes) {
  std::error_code error;
  auto entry =
      std::filesystem::directory_iterator(system_.place("/proc/" + process + "/fd"), error);
  // A process that has ended meanwhile has nothing open.
  if (error && error != std::errc::no_such_file_or_directory) cannotLookInto(process);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    if (++descriptors_ > mostDescriptors) {
      areAllKnown_ = false;
      arePeopleKnown_ = false;
      return;
    }
    lookAt(process, entry->path().filename(), nodes);
  }
}

void NodeHolders::cannotLookInto(const std::string& process) {
  if (parseInteger(process) != self_) areAllKnown_ = false;
  struct stat status {};
  if (::stat(system_.place("/proc/" + process).c_str(), &status) != 0) return;
  if (isPersons(status.st_uid) && status.st_uid != ::geteuid()) arePeopleKnown_ = false;
}

void NodeHolders::lookAt(const std::string& process, const std::string& descriptor,
                         const std::vector<std::string>& nodes) {
  const std::string target = system_.link("/proc/" + process + "/fd/" + descriptor);
  const auto node = std::find_if(nodes.begin(), nodes.end(), [&](const std::string& candidate) {
    return isNode(target, candidate);
  });
  if (node == nodes.end()) return;
  Opening& opening = openingOf(*node, *parseInteger(process));
  ++opening.count;
  opening.hasWriteLock = opening.hasWriteLock || hasWriteLock(process, descriptor);
}

bool NodeHolders::hasWriteLock(const std::string& process, const std::string& descriptor) const {
  const std::string facts = system_.content("/proc/" + process + "/fdinfo/" + descriptor);
  const auto lines = split(facts, '\n');
  return std::any_of(lines.begin(), lines.end(), isWriteLock);
}

// /proc/locks also lists the processes of other users.
void NodeHolders::addLocks(const std::vector<std::string>& nodes) {
  const auto locks = parseFileLocks(system_.content("/proc/locks"));
  for (const std::string& node : nodes) {
    struct stat file {};
    if (::stat(system_.place(node).c_str(), &file) != 0) continue;
    for (const FileLock& lock : locks) {
      if (lock.process == self_ || !isOn(lock, file)) continue;
      Opening& opening = openingOf(node, lock.process);
      opening.isExclusive = opening.isExclusive || lock.isExclusive;
    }
  }
}

NodeHolders::Opening& NodeHolders::openingOf(const std::string& node, std::int64_t process) {
  const auto known = std::find_if(openings_.begin(), openings_.end(), [&](const Opening& opening) {
    return opening.node == node && opening.process == process;
  });
  if (known != openings_.end()) return *known;
  return openings_.emplace_back(Opening{node, process});
}

std::vector<NodeHolder> otherHoldersOf(int node) {
  const SystemFiles system("/");
  const std::string path = pathOf(system, node);
  return NodeHolders(system, ::getpid(), {path}).of(path);
}

bool mayOthersHave(int node) {
  const SystemFiles system("/");
  const std::string path = pathOf(system, node);
  return path.empty() || NodeHolders(system, ::getpid(), {path}).mayOthersHave(path);
}

}  // namespace quorvane
