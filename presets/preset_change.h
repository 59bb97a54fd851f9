#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// One change of the user's presets. It can be applied to any state of the list, so that changes of
// several programs combine: each is applied to what the file holds when its turn comes.
//
// A record of the list counts as the one that a change means when it is equal to it in every field.
// What happens when another program did something to the same id in the meantime ("theirs"):
//
//   ours     | theirs: added          | theirs: changed        | theirs: deleted
//   ---------|------------------------|------------------------|---------------------
//   added    | both stay, ours under  | both stay, ours under  | ours is added
//            | a new id; equal        | a new id               |
//            | records stay one       |                        |
//   changed  | ours is changed,       | both stay, ours behind | ours is added
//            | theirs stays           | theirs with a new id   |
//   deleted  | ours is deleted,       | theirs stays           | it is gone
//            | theirs stays           |                        |
//
// So nothing that a program saved is lost by what another one does.
class PresetChange {
 public:
  // A place in the list: behind the record with the id `after`, else at the index, else at the end.
  struct Place {
    std::optional<UUID> after;
    std::size_t index = 0;
  };

  // Where a record stands.
  static Place placeOf(const std::vector<TuningPreset>& presets, std::size_t index);

  // At the end of the list.
  static PresetChange add(std::vector<TuningPreset> presets);
  static PresetChange insert(TuningPreset preset, Place place);
  static PresetChange remove(TuningPreset preset);
  static PresetChange replace(TuningPreset before, TuningPreset after);

  // False when the record stays although it was to be removed, as another program changed it.
  bool apply(std::vector<TuningPreset>& presets) const;

  // The record that this removes; none when it is another change.
  const TuningPreset* removed() const;

 private:
  struct Add {
    std::vector<TuningPreset> presets;
    std::vector<UUID> spareIDs;  // one for each
    std::optional<Place> place;  // the end, without
  };
  struct Remove {
    TuningPreset preset;
  };
  struct Replace {
    TuningPreset before;
    TuningPreset after;
    UUID spareID;
  };

  using What = std::variant<Add, Remove, Replace>;
  explicit PresetChange(What what) : what_(std::move(what)) {}

  static bool applyTo(std::vector<TuningPreset>& presets, const Add& add);
  static bool applyTo(std::vector<TuningPreset>& presets, const Remove& remove);
  static bool applyTo(std::vector<TuningPreset>& presets, const Replace& replace);

  What what_;
};

}  // namespace quorvane
