#include "ui/presets/listed_presets.h"

#include <gtest/gtest.h>

#include "tests/app/model_fixture.h"
#include "ui/presets/preset_filter.h"

namespace quorvane {
namespace {

using P = TuningParameter;

TEST(ListedPresets, AreTheSameObjectsUntilTheyChange) {
  std::vector<TuningPreset> presets{presetOf("A", {{P::forceFeedback, 80}}), presetOf("B", {}),
                                    presetOf("C", {})};
  ListedPresets listed;
  listed.update(presets);
  const auto before = listed.matching(PresetFilter());
  presets[1].name = "Changed";
  presets.insert(presets.begin(), presetOf("New", {}));
  listed.update(presets);
  const auto after = listed.matching(PresetFilter());
  ASSERT_EQ(after.size(), 4U);
  for (std::size_t i = 0; i < after.size(); ++i) EXPECT_EQ(*after[i], presets[i]);
  EXPECT_EQ(after[1], before[0]);
  EXPECT_EQ(after[3], before[2]);
  EXPECT_EQ(before[1]->name, "B");
}

TEST(ListedPresets, OneIdMayBeThereTwice) {
  std::vector<TuningPreset> presets{presetOf("A", {}), presetOf("B", {})};
  presets[1].id = presets[0].id;
  ListedPresets listed;
  listed.update(presets);
  presets.push_back(presetOf("C", {}));
  listed.update(presets);
  const auto all = listed.matching(PresetFilter());
  ASSERT_EQ(all.size(), 3U);
  for (std::size_t i = 0; i < all.size(); ++i) EXPECT_EQ(*all[i], presets[i]);
}

TEST(ListedPresets, ASearchChoosesSomeInTheirOrder) {
  ListedPresets listed;
  listed.update({presetOf("Spa", {}), presetOf("Imola", {}), presetOf("Spa, wet", {})});
  const auto found = listed.matching(PresetFilter(QStringLiteral("SPA"), std::nullopt));
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0]->name, "Spa");
  EXPECT_EQ(found[1]->name, "Spa, wet");
  EXPECT_EQ(listed.size(), 3U);
}

}  // namespace
}  // namespace quorvane
