#include "presets/comparison_text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace quorvane {
namespace {

using Texts = std::vector<std::string>;

Texts countsOf(const TuningPreset::Values& left, const TuningPreset::Values& right,
               const OneSidedWords& words = {}) {
  return comparedCountTexts(SettingsComparison(left, right, std::nullopt), words);
}

TEST(ComparisonText, CountsAreOneOrMany) {
  EXPECT_EQ(countsOf({}, {}), (Texts{"0 differ", "0 are the same"}));
  EXPECT_EQ(countsOf({{"FF", 1}, {"SHO", 10}}, {{"FF", 2}, {"SHO", 10}}),
            (Texts{"1 differs", "1 is the same"}));
}

TEST(ComparisonText, EveryStateThatOccursIsCounted) {
  EXPECT_EQ(countsOf({{"FF", 1}, {"SHO", 10}}, {{"SPR", 10}, {"SHO", 1000}, {"XYZ", 1}}),
            (Texts{"0 differ", "0 are the same", "1 only left", "1 only right", "1 out of range",
                   "1 not on this base"}));
}

TEST(ComparisonText, OneSideMayHaveAName) {
  EXPECT_EQ(countsOf({{"FF", 1}}, {}, {"only on the base", "only right"}),
            (Texts{"0 differ", "0 are the same", "1 only on the base"}));
}

}  // namespace
}  // namespace quorvane
