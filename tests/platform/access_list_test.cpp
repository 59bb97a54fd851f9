#include "platform/access_list.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_directory.h"

namespace quorvane::access_list_test {
namespace {

Bytes concatenated(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

Bytes entry(std::uint8_t tag, std::uint8_t permissions, std::uint32_t id) {
  return {tag,
          0,
          permissions,
          0,
          static_cast<std::uint8_t>(id),
          static_cast<std::uint8_t>(id >> 8U),
          static_cast<std::uint8_t>(id >> 16U),
          static_cast<std::uint8_t>(id >> 24U)};
}

const Bytes header{2, 0, 0, 0};
constexpr std::uint32_t nobody = 0xFFFFFFFF;

std::string text(const std::vector<AccessEntry>& list) {
  std::string text;
  for (const AccessEntry& entry : list) {
    text += std::string(entry.isGroup ? "g" : "u") + std::to_string(entry.id) +
            (entry.mayRead ? "r" : "-") + (entry.mayWrite ? "w" : "-") + " ";
  }
  return text;
}

TEST(AccessList, TellsNamedUsersAndGroupsWithTheMaskApplied) {
  const auto list = [](std::uint8_t mask) {
    return text(parseAccessList(
        concatenated({header, entry(0x01, 6, nobody), entry(0x02, 6, 1000), entry(0x02, 4, 70000),
                      entry(0x04, 0, nobody), entry(0x08, 6, 46), entry(0x10, mask, nobody),
                      entry(0x20, 0, nobody)})));
  };
  EXPECT_EQ(list(6), "u1000rw u70000r- g46rw ");
  EXPECT_EQ(list(4), "u1000r- u70000r- g46r- ");
  EXPECT_EQ(list(0), "u1000-- u70000-- g46-- ");
}

TEST(AccessList, BytesOfAnotherFormAreNone) {
  const Bytes whole = concatenated({header, entry(0x02, 6, 1000)});
  EXPECT_EQ(text(parseAccessList(whole)), "u1000rw ");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(text(parseAccessList(ByteView(whole).first(length))), "") << length;
  }
  EXPECT_EQ(text(parseAccessList(concatenated({{3, 0, 0, 0}, entry(0x02, 6, 1000)}))), "");
}

TEST(AccessList, AFileWithoutOneHasNone) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "");
  EXPECT_EQ(text(accessListOf(directory / "file")), "");
  EXPECT_EQ(text(accessListOf(directory / "missing")), "");
}

}  // namespace
}  // namespace quorvane::access_list_test
