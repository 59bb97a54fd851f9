#include "presets/preset_copy.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TEST(PresetCopy, HasANameThatNoOtherHas) {
  struct Case {
    std::string name;
    std::vector<std::string> taken;
    std::string copy;
  };
  const std::vector<Case> cases{
      {"Spa", {"Spa"}, "Spa copy"},
      {"Spa", {"Spa", "SPA COPY"}, "Spa copy 2"},
      {"Spa", {"Spa", "Spa copy", "Spa copy 2", "Spa copy 4"}, "Spa copy 3"},
      {"Spa copy", {"Spa copy"}, "Spa copy 2"},
      {"Spa copy 2", {"Spa", "Spa copy 2"}, "Spa copy"},
      {"Spa 2", {"Spa 2"}, "Spa 2 copy"},
      {"Spa copy x", {}, "Spa copy x copy"},
      {" copy", {}, " copy copy"},
      {"copy", {}, "copy copy"},
      {"Gr\xC3\xBCn", {}, "Gr\xC3\xBCn copy"},
      {"", {}, " copy"},
  };
  for (const auto& [name, taken, copy] : cases) {
    std::vector<TuningPreset> presets;
    for (const std::string& other : taken) presets.emplace_back().name = other;
    EXPECT_EQ(copyName(name, presets), copy) << name;
  }
}

TEST(PresetCopy, KeepsAllButIDAndName) {
  TuningPreset expected = TuningPreset::builtIn()[1];
  const TuningPreset copy = copyOf(expected, "Mine");
  EXPECT_NE(copy.id, expected.id);
  expected.id = copy.id;
  expected.name = "Mine";
  expected.isBuiltIn = false;
  EXPECT_EQ(copy, expected);
}

}  // namespace
}  // namespace quorvane
