#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "presets/tuning_preset.h"

namespace quorvane {

// One change of the user's presets. It can be applied to any state of the list, so that changes of
// several programs merge: each is applied to the file's content at the time of the write.
//
// A change applies to a record of the list only if every field is as expected. The conflicts, when
// another program added, changed or deleted a record with the same id in the meantime ("theirs"):
//
//   ours     | theirs: added          | theirs: changed        | theirs: deleted
//   ---------|------------------------|------------------------|---------------------
//   added    | both stay, ours under  | both stay, ours under  | ours is added
//            | a new id; one record   | a new id               |
//            | if they are equal      |                        |
//   changed  | ours is changed,       | both stay, ours after  | ours is added
//            | theirs stays           | theirs with a new id   |
//   deleted  | ours is deleted,       | theirs stays           | no change
//            | theirs stays           |                        |
//   moved    | ours is moved          | theirs is moved        | no change
//   restored | the list is restored, without theirs
//
// So no program loses a change because of another one, unless the user restores a former list.
class PresetChange {
 public:
  // A place in the list: after the record with the id `after`; if that is not there, at `index`; if
  // the list is shorter, at the end.
  struct Place {
    std::optional<UUID> after;
    std::size_t index = 0;
  };

  // The end of a move: an end of the list, or next to another record.
  struct Destination {
    enum class Where { first, last, before, after };
    Where where = Where::last;
    std::optional<TuningPreset> other;  // only for before and after
  };

  // The place of the record at an index.
  static Place placeOf(const std::vector<TuningPreset>& presets, std::size_t index);

  // At the end of the list.
  static PresetChange add(std::vector<TuningPreset> presets);
  static PresetChange insert(TuningPreset preset, Place place);
  static PresetChange remove(TuningPreset preset);
  static PresetChange replace(TuningPreset before, TuningPreset after);

  // Moves the record with the preset's id, in its current state; of several, the equal one. No
  // change when that record or the destination's is not in the list.
  static PresetChange move(TuningPreset preset, Destination destination);

  // Replaces the whole list by a former one.
  static PresetChange restore(std::vector<TuningPreset> presets);

  // False when the record to remove stays because another program changed it.
  bool apply(std::vector<TuningPreset>& presets) const;

  // The record that this change removes; null for other changes.
  const TuningPreset* removed() const;

 private:
  struct Add {
    std::vector<TuningPreset> presets;
    std::vector<UUID> spareIDs;  // one per preset, used if its id is taken
    std::optional<Place> place;  // none: the end
  };
  struct Remove {
    TuningPreset preset;
  };
  struct Replace {
    TuningPreset before;
    TuningPreset after;
    UUID spareID;
  };
  struct Move {
    TuningPreset preset;
    Destination destination;
  };
  struct Restore {
    std::vector<TuningPreset> presets;
  };

  using What = std::variant<Add, Remove, Replace, Move, Restore>;
  explicit PresetChange(What what) : what_(std::move(what)) {}

  static bool applyTo(std::vector<TuningPreset>& presets, const Add& add);
  static bool applyTo(std::vector<TuningPreset>& presets, const Remove& remove);
  static bool applyTo(std::vector<TuningPreset>& presets, const Replace& replace);
  static bool applyTo(std::vector<TuningPreset>& presets, const Move& move);
  static bool applyTo(std::vector<TuningPreset>& presets, const Restore& restore);

  What what_;
};

}  // namespace quorvane
