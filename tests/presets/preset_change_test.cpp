#include "presets/preset_change.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quorvane {
namespace {

using Presets = std::vector<TuningPreset>;

TuningPreset presetCalled(std::string name) {
  TuningPreset preset;
  preset.name = std::move(name);
  return preset;
}

TuningPreset with(TuningPreset preset, std::int64_t forceFeedback) {
  preset.values["FF"] = forceFeedback;
  return preset;
}

// "first spa=80": the names and force feedback. "*" marks a record whose id is not in `known`.
std::string shown(const Presets& presets, const std::vector<UUID>& known) {
  std::string text;
  for (const TuningPreset& preset : presets) {
    if (!text.empty()) text += " ";
    text += preset.name;
    if (const auto value = preset.value(TuningParameter::forceFeedback)) {
      text += "=" + std::to_string(*value);
    }
    if (std::find(known.begin(), known.end(), preset.id) == known.end()) text += "*";
  }
  return text;
}

TEST(PresetChange, OfOneIDOnBothSidesLosesNothing) {
  const TuningPreset first = presetCalled("first");
  const TuningPreset last = presetCalled("last");
  const TuningPreset spa = presetCalled("spa");
  const Presets without{first, last};
  const Presets both{first, spa, last};
  const Presets theirsAdded{first, spa, last, with(spa, 20)};
  const Presets theirsChanged{first, with(spa, 20), last};

  struct Case {
    const char* description;
    PresetChange ours;
    Presets theirs;
    const char* result;
    bool isDone = true;
  };
  const PresetChange add = PresetChange::add({with(spa, 10)});
  const PresetChange change = PresetChange::replace(spa, with(spa, 10));
  const PresetChange remove = PresetChange::remove(spa);
  const std::vector<Case> cases{
      {"added, added", add, {first, last, with(spa, 20)}, "first last spa=20 spa=10*"},
      {"added, the same added", add, {first, last, with(spa, 10)}, "first last spa=10"},
      {"added, changed", add, theirsChanged, "first spa=20 last spa=10*"},
      {"added, deleted", add, without, "first last spa=10"},
      {"changed, added", change, theirsAdded, "first spa=10 last spa=20"},
      {"changed, changed", change, theirsChanged, "first spa=20 spa=10* last"},
      {"changed, changed in the same way",
       change,
       {first, with(spa, 10), last},
       "first spa=10 last"},
      {"changed, deleted", change, without, "first last spa=10"},
      {"deleted, added", remove, theirsAdded, "first last spa=20"},
      {"deleted, changed", remove, theirsChanged, "first spa=20 last", false},
      {"deleted, deleted", remove, without, "first last"},
      {"added, nothing", add, without, "first last spa=10"},
      {"changed, nothing", change, both, "first spa=10 last"},
      {"deleted, nothing", remove, both, "first last"},
  };
  for (const auto& [description, ours, theirs, result, isDone] : cases) {
    SCOPED_TRACE(description);
    Presets presets = theirs;
    EXPECT_EQ(ours.apply(presets), isDone);
    EXPECT_EQ(shown(presets, {first.id, spa.id, last.id}), result);
    // A change is idempotent.
    Presets again = presets;
    ours.apply(again);
    if (theirs != theirsAdded) {
      EXPECT_EQ(shown(again, {first.id, spa.id, last.id}), result);
    }
  }
}

TEST(PresetChange, ARecordIsPutBackToItsPlaceWhereverThatIsByNow) {
  const Presets all{presetCalled("a"), presetCalled("b"), presetCalled("c"), presetCalled("d")};
  const TuningPreset x = presetCalled("x");
  struct Case {
    Presets present;
    std::string result;
  };
  const auto put = [&](std::size_t index, Presets present) {
    PresetChange::insert(x, PresetChange::placeOf(all, index)).apply(present);
    return shown(present, {all[0].id, all[1].id, all[2].id, all[3].id, x.id});
  };
  EXPECT_EQ(put(0, all), "x a b c d");
  EXPECT_EQ(put(2, all), "a b x c d");
  EXPECT_EQ(put(4, all), "a b c d x");
  EXPECT_EQ(put(2, {all[1], all[2]}), "b x c");
  EXPECT_EQ(put(3, {all[3], all[2], all[1]}), "d c x b");
  EXPECT_EQ(put(2, {all[0], all[2], all[3]}), "a c x d");
  EXPECT_EQ(put(4, {all[0]}), "a x");
  EXPECT_EQ(put(3, {}), "x");
  const TuningPreset twin{all[0].id, "twin", {}, {}, {}, {}, false};
  const Presets twins{all[0], twin, all[1]};
  Presets present = twins;
  PresetChange::insert(x, PresetChange::placeOf(twins, 2)).apply(present);
  EXPECT_EQ(shown(present, {all[0].id, all[1].id, x.id}), "a twin x b");
}

TEST(PresetChange, OfTwoEqualRecordsOneIsRemovedAtATime) {
  const TuningPreset spa = presetCalled("spa");
  Presets presets{spa, presetCalled("other"), spa};
  EXPECT_TRUE(PresetChange::remove(spa).apply(presets));
  EXPECT_EQ(presets.size(), 2U);
  EXPECT_TRUE(PresetChange::remove(spa).apply(presets));
  EXPECT_EQ(presets.size(), 1U);
}

TEST(PresetChange, SeveralAreAddedInTheirOrder) {
  Presets presets{presetCalled("one")};
  const Presets more{presetCalled("two"), presetCalled("three"), presetCalled("two")};
  PresetChange::add(more).apply(presets);
  ASSERT_EQ(presets.size(), 4U);
  EXPECT_EQ(Presets(presets.begin() + 1, presets.end()), more);
}

}  // namespace
}  // namespace quorvane
