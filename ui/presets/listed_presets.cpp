#include "ui/presets/listed_presets.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "ui/presets/preset_filter.h"

namespace quorvane {

void ListedPresets::update(const std::vector<TuningPreset>& presets) {
  const bool isSame = std::equal(
      presets_.begin(), presets_.end(), presets.begin(), presets.end(),
      [](const ListedPreset& listed, const TuningPreset& preset) { return *listed == preset; });
  if (isSame) return;
  std::multimap<UUID, ListedPreset> known;
  for (ListedPreset& listed : std::exchange(presets_, {})) {
    known.emplace(listed->id, std::move(listed));
  }
  presets_.reserve(presets.size());
  for (const TuningPreset& preset : presets) {
    const auto [first, last] = known.equal_range(preset.id);
    const auto found =
        std::find_if(first, last, [&](const auto& listed) { return *listed.second == preset; });
    presets_.push_back(found == last ? std::make_shared<const TuningPreset>(preset)
                                     : found->second);
  }
}

std::vector<ListedPreset> ListedPresets::matching(const PresetFilter& filter) const {
  if (!filter.isActive()) return presets_;
  std::vector<ListedPreset> found;
  std::copy_if(presets_.begin(), presets_.end(), std::back_inserter(found),
               [&](const ListedPreset& listed) { return filter.matches(*listed); });
  return found;
}

}  // namespace quorvane
