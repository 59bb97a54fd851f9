#include "support/version_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/file.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using Contents = std::vector<std::string>;

class VersionFolderTest : public testing::Test {
 protected:
  void keep(std::string_view content) const { folder_.keep(content, time_); }

  Contents contents() const {
    Contents contents;
    for (const VersionFolder::Version& version : folder_.versions()) {
      contents.push_back(contentOf(version.file));
    }
    return contents;
  }

  const WallSeconds time_ = parseISO8601("2026-03-01T09:30:00Z").value();
  TemporaryDirectory directory_;
  const VersionFolder folder_{directory_ / "a/versions"};
};

TEST_F(VersionFolderTest, KeepsContentsUnderTheirNumberAndTime) {
  EXPECT_EQ(contents(), Contents{});
  keep("one");
  folder_.keep("", time_ + std::chrono::seconds(61));
  const auto versions = folder_.versions();
  ASSERT_EQ(versions.size(), 2U);
  EXPECT_EQ(versions[0].number, 1U);
  EXPECT_EQ(versions[0].time, time_);
  EXPECT_EQ(versions[0].size, 3U);
  EXPECT_EQ(versions[1].file, directory_ / "a/versions/000002-20260301T093101Z.json");
  EXPECT_EQ(contents(), (Contents{"one", ""}));
}

TEST_F(VersionFolderTest, NoTwoNeighboursAreEqual) {
  for (const char* const content : {"one", "one", "two", "two", "one"}) keep(content);
  EXPECT_EQ(contents(), (Contents{"one", "two", "one"}));
}

TEST_F(VersionFolderTest, OfMoreThanTwentyTheOldestAreRemoved) {
  for (int i = 1; i <= 23; ++i) keep(std::to_string(i));
  const auto versions = folder_.versions();
  ASSERT_EQ(versions.size(), 20U);
  EXPECT_EQ(versions.front().number, 4U);
  EXPECT_EQ(contents().front(), "4");
  EXPECT_EQ(contents().back(), "23");
}

TEST_F(VersionFolderTest, OfMoreThanTheirBytesTheOldestAreRemoved) {
  const std::size_t half = VersionFolder::mostBytes / 2;
  keep("small");
  keep(std::string(half, 'a'));
  keep(std::string(half - 5, 'b'));
  EXPECT_EQ(folder_.versions().size(), 3U);
  keep("c");
  EXPECT_EQ(folder_.versions().size(), 3U);
  EXPECT_EQ(folder_.versions().front().number, 2U);
  keep(std::string(VersionFolder::mostBytes, 'd'));
  EXPECT_EQ(folder_.versions().size(), 1U);
  EXPECT_THROW(keep(std::string(VersionFolder::mostBytes + 1, 'e')), FileError);
  EXPECT_EQ(folder_.versions().size(), 1U);
}

TEST_F(VersionFolderTest, LeavesStrangersAlone) {
  const std::filesystem::path path = directory_ / "a/versions";
  keep("one");
  const Contents strangers{"notes.txt",
                           "000002.json",
                           "2-20260301T093000Z.json",
                           "000002-20261301T093000Z.json",
                           "000002-20260301T093000Z.json.bak",
                           "-00002-20260301T093000Z.json",
                           "000000-20260301T093000Z.json",
                           "999999999-20260301T093000Z.json",
                           "99999999999999999999-20260301T093000Z.json",
                           "000002-",
                           "-",
                           "\xFF-\xFF"};
  for (const std::string& name : strangers) putFile(path / name, "stranger");
  std::filesystem::create_directory(path / "000003-20250301T093000Z.json");
  ASSERT_EQ(::mkfifo((path / "000004-20250301T093000Z.json").c_str(), 0666), 0);
  std::filesystem::create_symlink("/dev/zero", path / "000005-20250301T093000Z.json");
  for (int i = 0; i < 25; ++i) keep("more " + std::to_string(i));
  EXPECT_EQ(folder_.versions().size(), 20U);
  EXPECT_EQ(folder_.versions().back().number, 26U);
  for (const std::string& name : strangers) EXPECT_EQ(contentOf(path / name), "stranger") << name;
}

TEST_F(VersionFolderTest, ThereIsNoNumberAfterTheLast) {
  keep("one");
  putFile(directory_ / "a/versions/999999998-20260301T093000Z.json", "stranger");
  EXPECT_THROW(keep("two"), FileError);
  EXPECT_EQ(contents(), (Contents{"one", "stranger"}));
}

TEST_F(VersionFolderTest, AFileInItsPlaceIsAFailure) {
  putFile(directory_ / "a", "file");
  EXPECT_THROW(keep("one"), FileError);
  EXPECT_THROW(folder_.versions(), FileError);
}

}  // namespace
}  // namespace quorvane
