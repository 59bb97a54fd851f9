#include "cli/preset_library.h"

#include <fmt/format.h>

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

void PresetLibrary::apply(const PresetChange& change) {
  bool isDone = true;
  auto contents =
      store_.change([&](std::vector<TuningPreset>& presets) { isDone = change.apply(presets); });
  own_ = std::move(contents.presets);
  if (!contents.kept.empty()) {
    printTo(world_.err, "{}\nThe old file is kept beside the new one, as {}\n",
            unreadableText(contents.damage), oneLine(contents.kept.string()));
  }
  if (!isDone) throw FileError(store_.fileURL(), "Another program has changed this preset");
}

}  // namespace quorvane
