#include "presets/preset_difference.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quorvane {
namespace {

using PresetList = std::vector<TuningPreset>;

// The records of `presets` without an equal one in `others`; of equal records, one each is matched.
PresetList withoutEqual(const PresetList& presets, PresetList others) {
  PresetList rest;
  for (const TuningPreset& preset : presets) {
    const auto equal = std::find(others.begin(), others.end(), preset);
    if (equal == others.end()) {
      rest.push_back(preset);
    } else {
      others.erase(equal);
    }
  }
  return rest;
}

struct Edit {
  TuningPreset before;
  TuningPreset after;
};

// Removes the pairs with the same id from both lists.
std::vector<Edit> takeEdits(PresetList& deleted, PresetList& added) {
  std::vector<Edit> edits;
  for (auto before = deleted.begin(); before != deleted.end();) {
    const auto after = std::find_if(added.begin(), added.end(), [&](const TuningPreset& preset) {
      return preset.id == before->id;
    });
    if (after == added.end()) {
      ++before;
      continue;
    }
    edits.push_back({std::move(*before), std::move(*after)});
    added.erase(after);
    before = deleted.erase(before);
  }
  return edits;
}

void append(std::string& text, const std::string& part) {
  if (!text.empty()) text += ", ";
  text += part;
}

void append(std::string& text, std::string_view verb, const PresetList& presets) {
  if (presets.size() == 1) append(text, fmt::format("{} \"{}\"", verb, presets.front().name));
  if (presets.size() > 1) append(text, fmt::format("{} {}", verb, presets.size()));
}

std::string editsText(const std::vector<Edit>& edits) {
  if (edits.empty()) return "";
  if (edits.size() > 1) return fmt::format("edited {}", edits.size());
  const auto& [before, after] = edits.front();
  if (before.name == after.name) return fmt::format("edited \"{}\"", after.name);
  return fmt::format(R"(renamed "{}" to "{}")", before.name, after.name);
}

}  // namespace

std::string differenceText(const PresetList& before, const PresetList& after) {
  PresetList deleted = withoutEqual(before, after);
  PresetList added = withoutEqual(after, before);
  std::string text = editsText(takeEdits(deleted, added));
  append(text, "added", added);
  append(text, "deleted", deleted);
  if (text.empty() && before != after) text = "moved presets";
  return text;
}

}  // namespace quorvane
