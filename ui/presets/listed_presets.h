#pragma once

#include <memory>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

class PresetFilter;

// A preset that lists share. It never changes: a changed preset is another object.
using ListedPreset = std::shared_ptr<const TuningPreset>;

// The presets of a group, from which a search chooses. Neither a search nor a list copies them.
class ListedPresets {
 public:
  // Replaces the presets. Objects of presets that are the same as before are kept.
  void update(const std::vector<TuningPreset>& presets);

  std::size_t size() const { return presets_.size(); }
  std::vector<ListedPreset> matching(const PresetFilter& filter) const;

 private:
  std::vector<ListedPreset> presets_;
};

}  // namespace quorvane
