#include "platform/access_list.h"

#include <sys/xattr.h>

#include <cstddef>

namespace quorvane {
namespace {

constexpr const char* attribute = "system.posix_acl_access";
constexpr std::size_t largestList = 4096;

// The format: a version, then entries with tag, permissions and ID; all little-endian.
constexpr std::uint32_t version = 2;
constexpr std::size_t headerLength = 4;
constexpr std::size_t entryLength = 8;
constexpr std::size_t permissionsOffset = 2;
constexpr std::size_t idOffset = 4;

constexpr unsigned userTag = 0x02;
constexpr unsigned groupTag = 0x08;
constexpr unsigned maskTag = 0x10;
constexpr unsigned readBit = 4;
constexpr unsigned writeBit = 2;

unsigned number16(ByteView bytes) { return littleEndian16(bytes[0], bytes[1]); }

std::uint32_t number32(ByteView bytes) {
  return number16(bytes) | (std::uint32_t{number16(bytes.subspan(2))} << 16U);
}

unsigned maskOf(ByteView entries) {
  for (; entries.size() >= entryLength; entries = entries.subspan(entryLength)) {
    if (number16(entries) == maskTag) return number16(entries.subspan(permissionsOffset));
  }
  return readBit | writeBit;
}

}  // namespace

std::vector<AccessEntry> parseAccessList(ByteView bytes) {
  std::vector<AccessEntry> list;
  if (bytes.size() < headerLength || number32(bytes) != version) return list;
  ByteView rest = bytes.subspan(headerLength);
  const unsigned mask = maskOf(rest);
  for (; rest.size() >= entryLength; rest = rest.subspan(entryLength)) {
    const unsigned tag = number16(rest);
    if (tag != userTag && tag != groupTag) continue;
    const unsigned granted = number16(rest.subspan(permissionsOffset)) & mask;
    list.push_back({tag == groupTag, number32(rest.subspan(idOffset)), (granted & readBit) != 0,
                    (granted & writeBit) != 0});
  }
  return list;
}

std::vector<AccessEntry> accessListOf(const std::string& path) {
  Bytes bytes(largestList);
  const ssize_t length = ::getxattr(path.c_str(), attribute, bytes.data(), bytes.size());
  if (length <= 0) return {};
  return parseAccessList(ByteView(bytes).first(static_cast<std::size_t>(length)));
}

}  // namespace quorvane
