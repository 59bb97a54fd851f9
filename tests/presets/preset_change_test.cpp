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

TEST(PresetChange, ARecordIsMovedInTheListOfThatMoment) {
  using Where = PresetChange::Destination::Where;
  const Presets all{presetCalled("a"), presetCalled("b"), presetCalled("c"), presetCalled("d")};
  const Presets gone{all[0], all[2]};
  const Presets changed{all[0], with(all[1], 20), all[2], with(all[3], 30)};
  struct Case {
    std::size_t moved;
    Where where;
    std::size_t other;
    Presets present;
    std::string result;
  };
  const std::vector<Case> cases{
      {1, Where::first, 0, all, "b a c d"},
      {0, Where::first, 0, all, "a b c d"},
      {1, Where::last, 0, all, "a c d b"},
      {3, Where::last, 0, all, "a b c d"},
      {0, Where::before, 3, all, "b c a d"},
      {3, Where::before, 0, all, "d a b c"},
      {0, Where::after, 3, all, "b c d a"},
      {3, Where::after, 0, all, "a d b c"},
      {1, Where::after, 0, all, "a b c d"},
      {1, Where::after, 1, all, "a b c d"},
      {3, Where::after, 1, changed, "a b=20 d=30 c"},
      {2, Where::before, 3, gone, "a c"},
      {3, Where::first, 0, gone, "a c"},
      {2, Where::first, 0, gone, "c a"},
      {2, Where::first, 0, {}, ""},
  };
  for (const auto& [moved, where, other, present, result] : cases) {
    const auto change = PresetChange::move(all[moved], {where, all[other]});
    Presets presets = present;
    for (int time = 0; time < 2; ++time) {  // idempotent
      EXPECT_TRUE(change.apply(presets));
      EXPECT_EQ(shown(presets, {all[0].id, all[1].id, all[2].id, all[3].id}), result)
          << moved << static_cast<int>(where) << other;
    }
    EXPECT_EQ(change.removed(), nullptr);
  }
}

TEST(PresetChange, AFormerListIsRestoredWhateverThereIs) {
  const Presets former{presetCalled("a"), presetCalled("b")};
  const auto change = PresetChange::restore(former);
  for (const Presets& present : {Presets{}, former, Presets{former[1], presetCalled("c")}}) {
    Presets presets = present;
    EXPECT_TRUE(change.apply(presets));
    EXPECT_EQ(presets, former);
  }
  EXPECT_EQ(change.removed(), nullptr);
}

TEST(PresetChange, OfSeveralRecordsWithOneIDTheEqualOneIsMoved) {
  using Where = PresetChange::Destination::Where;
  const TuningPreset spa = presetCalled("spa");
  const TuningPreset other = presetCalled("other");
  Presets presets{with(spa, 10), other, with(spa, 20)};
  PresetChange::move(with(spa, 20), {Where::before, with(spa, 10)}).apply(presets);
  EXPECT_EQ(shown(presets, {spa.id, other.id}), "spa=20 spa=10 other");
  PresetChange::move(other, {Where::before, with(spa, 20)}).apply(presets);
  EXPECT_EQ(shown(presets, {spa.id, other.id}), "other spa=20 spa=10");
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
