#include "presets/preset_difference.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TuningPreset presetOf(const TuningPreset& record, const char* name, std::int64_t value) {
  TuningPreset preset = record;
  preset.name = name;
  preset.values["FF"] = value;
  return preset;
}

TEST(PresetDifference, SaysWhatChangedInAFewWords) {
  const TuningPreset a = presetOf({}, "a", 1);
  const TuningPreset b = presetOf({}, "b", 2);
  const TuningPreset c = presetOf({}, "c", 3);
  struct Case {
    std::vector<TuningPreset> before;
    std::vector<TuningPreset> after;
    std::string text;
  };
  const std::vector<Case> cases{
      {{}, {}, ""},
      {{a, b}, {a, b}, ""},
      {{a}, {a, b}, R"(added "b")"},
      {{}, {a, b}, "added 2"},
      {{a, b}, {b}, R"(deleted "a")"},
      {{a, b, c}, {}, "deleted 3"},
      {{a, b}, {presetOf(a, "a", 5), b}, R"(edited "a")"},
      {{a, b}, {presetOf(a, "x", 5), b}, R"(renamed "a" to "x")"},
      {{a, b}, {presetOf(a, "x", 5), presetOf(b, "b", 5)}, "edited 2"},
      {{a, b, c}, {c, a, b}, "moved presets"},
      {{a, b}, {presetOf(a, "a", 5), c}, R"(edited "a", added "c", deleted "b")"},
      {{a, a}, {a}, R"(deleted "a")"},
      {{a}, {a, a}, R"(added "a")"},
      {{a, presetOf(a, "a", 5)}, {presetOf(a, "a", 5), a}, "moved presets"},
  };
  for (const auto& [before, after, text] : cases) EXPECT_EQ(differenceText(before, after), text);
}

}  // namespace
}  // namespace quorvane
