#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "support/file.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;

struct Seed {
  std::string property;
  fs::path file;
};

std::ostream& operator<<(std::ostream& stream, const Seed& seed) { return stream << seed.file; }

fs::path seedsOf(std::string_view property) { return fs::path(FUZZ_FOLDER) / "seeds" / property; }

std::vector<Seed> allSeeds() {
  std::vector<Seed> seeds;
  for (const Fuzz::Property& property : Fuzz::properties()) {
    for (const auto& entry : fs::directory_iterator(seedsOf(property.name))) {
      seeds.push_back({std::string(property.name), entry.path()});
    }
  }
  std::sort(seeds.begin(), seeds.end(),
            [](const Seed& a, const Seed& b) { return a.file < b.file; });
  return seeds;
}

// Test names may only have letters, digits and underscores.
std::string testName(const testing::TestParamInfo<Seed>& info) {
  std::string name = info.param.property + "_" + info.param.file.filename().string();
  const auto isOther = [](unsigned char c) { return std::isalnum(c) == 0; };
  std::replace_if(name.begin(), name.end(), isOther, '_');
  return name;
}

void check(std::string_view property, const std::string& bytes) {
  Fuzz::propertyNamed(property).check(Bytes(bytes.begin(), bytes.end()));
}

class SeedReplay : public testing::TestWithParam<Seed> {};

// A property that does not hold ends the program.
TEST_P(SeedReplay, HoldsItsProperty) { check(GetParam().property, readFile(GetParam().file)); }

INSTANTIATE_TEST_SUITE_P(Checked, SeedReplay, testing::ValuesIn(allSeeds()), testName);

TEST(Seeds, AreOfPropertiesThatThereAre) {
  std::set<std::string> properties;
  for (const Fuzz::Property& property : Fuzz::properties()) {
    properties.insert(std::string(property.name));
  }
  std::set<std::string> folders;
  for (const auto& entry : fs::directory_iterator(seedsOf(""))) {
    folders.insert(entry.path().filename());
  }
  std::set<std::string> dictionaries;
  for (const auto& entry : fs::directory_iterator(fs::path(FUZZ_FOLDER) / "dictionaries")) {
    dictionaries.insert(entry.path().stem());
  }
  EXPECT_EQ(folders, properties);
  EXPECT_EQ(dictionaries, properties);
}

TEST(Properties, HoldForNoInputAtAll) {
  for (const Fuzz::Property& property : Fuzz::properties()) {
    SCOPED_TRACE(property.name);
    property.check({});
  }
}

TEST(PropertiesDeathTest, AreNoticedWhenTheyFail) {
  check("planted", "no bug!");
  EXPECT_DEATH(check("planted", "bug!"), "internal fault: the planted property holds");
  EXPECT_DEATH(check("unheard of", ""), "internal fault: there is no such property");
}

TEST(FuzzInput, IsCutFromItsFront) {
  const Bytes bytes{1, 2, 3, 0, 4};
  Fuzz::Input input(bytes);
  EXPECT_EQ(input.byte(), 1);
  const ByteView before = input.until(0);
  EXPECT_EQ(Bytes(before.begin(), before.end()), (Bytes{2, 3}));
  EXPECT_FALSE(input.atEnd());
  EXPECT_EQ(input.bytes(5).size(), 1U);
  EXPECT_TRUE(input.atEnd());
  EXPECT_EQ(input.byte(), 0);
  EXPECT_TRUE(input.until(7).empty());
}

}  // namespace
}  // namespace quorvane
