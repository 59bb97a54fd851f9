#include "cli/preset_library.h"

#include <algorithm>

#include "cli/preset_names.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {

PresetLibrary::PresetLibrary(const World& world) : world_(world), store_(world.presets()) {
  try {
    own_ = store_.read();
    for (TuningPreset& preset : own_) preset.isBuiltIn = false;
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    readable_ = false;
    printTo(world.err, "Your own presets cannot be read: {}\n", oneLine(error.what()));
  }
}

std::vector<TuningPreset> PresetLibrary::all() const {
  std::vector<TuningPreset> presets = TuningPreset::builtIn();
  presets.insert(presets.end(), own_.begin(), own_.end());
  return presets;
}

TuningPreset PresetLibrary::named(const std::string& which) const {
  return presetNamed(all(), which);
}

std::vector<TuningPreset> PresetLibrary::named(const std::vector<std::string>& words) const {
  std::vector<TuningPreset> presets;
  presets.reserve(words.size());
  for (const std::string& which : words) presets.push_back(named(which));
  return presets;
}

void PresetLibrary::add(const std::vector<TuningPreset>& presets) {
  own_.insert(own_.end(), presets.begin(), presets.end());
}

void PresetLibrary::remove(const TuningPreset& preset) {
  const auto found = std::find(own_.begin(), own_.end(), preset);
  if (found != own_.end()) own_.erase(found);
}

void PresetLibrary::save() const {
  store_.save(own_);
  if (readable_) return;
  printTo(world_.err, "The old file is kept beside the new one, as {}.corrupt-...\n",
          oneLine(store_.fileURL().string()));
}

}  // namespace quorvane
