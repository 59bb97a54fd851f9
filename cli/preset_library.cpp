#include "cli/preset_library.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "cli/preset_names.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

std::string unreadableText(std::string_view reason) {
  return fmt::format("Your own presets cannot be read: {}", oneLine(reason));
}

}  // namespace

PresetLibrary::PresetLibrary(const World& world, IfUnreadable ifUnreadable)
    : world_(world), store_(world.presets()) {
  try {
    own_ = store_.contents().presets;
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    if (ifUnreadable == IfUnreadable::fail) throw;
    readable_ = false;
    printTo(world.err, "{}\n", unreadableText(error.what()));
  }
}

PresetLibrary::PresetLibrary(const World& world, const PresetChange& change)
    : world_(world), store_(world.presets()) {
  apply(change);
}

PresetLibrary PresetLibrary::withAdded(const World& world,
                                       const std::vector<TuningPreset>& presets) {
  return {world, PresetChange::add(presets)};
}

PresetLibrary PresetLibrary::withRestored(const World& world,
                                          const std::vector<TuningPreset>& presets) {
  return {world, PresetChange::restore(presets)};
}

std::vector<TuningPreset> PresetLibrary::all() const {
  std::vector<TuningPreset> presets = TuningPreset::builtIn();
  presets.insert(presets.end(), own_.begin(), own_.end());
  return presets;
}

TuningPreset PresetLibrary::named(const std::string& which) const {
  return presetNamed(all(), which);
}

TuningPreset PresetLibrary::firstNamed(const std::string& which) const {
  return presetNamed(all(), which, Twins::takeFirst);
}

std::vector<TuningPreset> PresetLibrary::named(const std::vector<std::string>& words) const {
  std::vector<TuningPreset> presets;
  presets.reserve(words.size());
  for (const std::string& which : words) presets.push_back(named(which));
  return presets;
}

void PresetLibrary::remove(const TuningPreset& preset) { apply(PresetChange::remove(preset)); }

void PresetLibrary::replace(const TuningPreset& before, const TuningPreset& after) {
  apply(PresetChange::replace(before, after));
}

void PresetLibrary::insertAfter(const TuningPreset& before, const TuningPreset& preset) {
  const auto found = std::find(own_.begin(), own_.end(), before);
  const std::size_t index = static_cast<std::size_t>(found - own_.begin());
  apply(
      PresetChange::insert(preset, PresetChange::placeOf(own_, std::min(index + 1, own_.size()))));
}

std::size_t PresetLibrary::move(const TuningPreset& preset,
                                const PresetChange::Destination& destination) {
  apply(PresetChange::move(preset, destination));
  if (destination.other) placeOf(*destination.other);
  return placeOf(preset);
}

// Prefers the equal record to others with the same id.
std::size_t PresetLibrary::placeOf(const TuningPreset& preset) const {
  auto found = std::find(own_.begin(), own_.end(), preset);
  if (found == own_.end()) {
    found = std::find_if(own_.begin(), own_.end(),
                         [&](const TuningPreset& own) { return own.id == preset.id; });
  }
  if (found == own_.end()) {
    throw FileError(store_.fileURL(),
                    fmt::format("Another program has deleted the preset \"{}\"", preset.name));
  }
  return static_cast<std::size_t>(found - own_.begin());
}

void PresetLibrary::apply(const PresetChange& change) {
  bool isDone = true;
  auto contents =
      store_.change([&](std::vector<TuningPreset>& presets) { isDone = change.apply(presets); });
  own_ = std::move(contents.presets);
  if (!contents.kept.empty()) {
    printTo(world_.err, "{}\nThe old file is kept beside the new one, as {}\n",
            unreadableText(contents.damage), oneLine(contents.kept.string()));
  }
  if (!contents.versionFailure.empty()) {
    printTo(world_.err, "The presets before this change were not kept as a version: {}\n",
            oneLine(contents.versionFailure));
  }
  if (!isDone) throw FileError(store_.fileURL(), "Another program has changed this preset");
}

}  // namespace quorvane
