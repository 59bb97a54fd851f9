#include "presets/preset_change.h"

#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

using Presets = std::vector<TuningPreset>;

Presets::iterator withID(Presets& presets, const UUID& id) {
  return std::find_if(presets.begin(), presets.end(),
                      [&](const TuningPreset& preset) { return preset.id == id; });
}

Presets::iterator equalTo(Presets& presets, const TuningPreset& wanted) {
  return std::find(presets.begin(), presets.end(), wanted);
}

// The record, equal or changed meanwhile.
Presets::iterator recordOf(Presets& presets, const TuningPreset& preset) {
  const auto equal = equalTo(presets, preset);
  return equal == presets.end() ? withID(presets, preset.id) : equal;
}

// The position to insert at; none when the record to be next to is not in the list.
std::optional<Presets::iterator> positionOf(Presets& presets,
                                            const PresetChange::Destination& destination) {
  using Where = PresetChange::Destination::Where;
  if (destination.where == Where::first) return presets.begin();
  if (destination.where == Where::last || !destination.other) return presets.end();
  const auto other = recordOf(presets, *destination.other);
  if (other == presets.end()) return std::nullopt;
  return destination.where == Where::before ? other : std::next(other);
}

Presets::iterator at(Presets& presets, const PresetChange::Place& place) {
  const auto index =
      presets.begin() + static_cast<std::ptrdiff_t>(std::min(place.index, presets.size()));
  if (!place.after) return index;
  // If several records have that id, prefer the one right before the index.
  if (index != presets.begin() && std::prev(index)->id == *place.after) return index;
  const auto before = withID(presets, *place.after);
  return before == presets.end() ? index : std::next(before);
}

}  // namespace

PresetChange::Place PresetChange::placeOf(const Presets& presets, std::size_t index) {
  if (index == 0) return {{}, 0};
  return {presets.at(index - 1).id, index};
}

PresetChange PresetChange::add(Presets presets) {
  std::vector<UUID> spareIDs(presets.size());
  std::generate(spareIDs.begin(), spareIDs.end(), UUID::random);
  return PresetChange(Add{std::move(presets), std::move(spareIDs), {}});
}

PresetChange PresetChange::insert(TuningPreset preset, Place place) {
  return PresetChange(Add{{std::move(preset)}, {UUID::random()}, place});
}

PresetChange PresetChange::remove(TuningPreset preset) {
  return PresetChange(Remove{std::move(preset)});
}

PresetChange PresetChange::replace(TuningPreset before, TuningPreset after) {
  return PresetChange(Replace{std::move(before), std::move(after), UUID::random()});
}

PresetChange PresetChange::move(TuningPreset preset, Destination destination) {
  return PresetChange(Move{std::move(preset), std::move(destination)});
}

PresetChange PresetChange::restore(Presets presets) {
  return PresetChange(Restore{std::move(presets)});
}

bool PresetChange::apply(Presets& presets) const {
  return std::visit([&](const auto& what) { return applyTo(presets, what); }, what_);
}

const TuningPreset* PresetChange::removed() const {
  const Remove* const remove = std::get_if<Remove>(&what_);
  return remove == nullptr ? nullptr : &remove->preset;
}

bool PresetChange::applyTo(Presets& presets, const Add& add) {
  for (std::size_t i = 0; i < add.presets.size(); ++i) {
    TuningPreset preset = add.presets[i];
    if (equalTo(presets, preset) != presets.end()) continue;
    if (withID(presets, preset.id) != presets.end()) {
      preset.id = add.spareIDs[i];
      if (equalTo(presets, preset) != presets.end()) continue;
    }
    presets.insert(add.place ? at(presets, *add.place) : presets.end(), std::move(preset));
  }
  return true;
}

bool PresetChange::applyTo(Presets& presets, const Remove& remove) {
  const auto found = equalTo(presets, remove.preset);
  if (found == presets.end()) return withID(presets, remove.preset.id) == presets.end();
  presets.erase(found);
  return true;
}

bool PresetChange::applyTo(Presets& presets, const Replace& replace) {
  const auto found = equalTo(presets, replace.before);
  if (found != presets.end()) {
    *found = replace.after;
    return true;
  }
  if (equalTo(presets, replace.after) != presets.end()) return true;
  TuningPreset ours = replace.after;
  auto place = withID(presets, ours.id);
  if (place != presets.end()) {
    ours.id = replace.spareID;
    if (equalTo(presets, ours) != presets.end()) return true;
    ++place;
  }
  presets.insert(place, std::move(ours));
  return true;
}

bool PresetChange::applyTo(Presets& presets, const Move& move) {
  const auto found = recordOf(presets, move.preset);
  if (found == presets.end()) return true;
  Presets others = presets;
  others.erase(others.begin() + (found - presets.begin()));
  const auto position = positionOf(others, move.destination);
  if (!position) return true;
  others.insert(*position, *found);
  presets = std::move(others);
  return true;
}

bool PresetChange::applyTo(Presets& presets, const Restore& restore) {
  presets = restore.presets;
  return true;
}

}  // namespace quorvane
