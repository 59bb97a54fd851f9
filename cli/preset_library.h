#pragma once

#include <string>
#include <vector>

#include "cli/context.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// The presets that a command works on: the built-in ones, and the user's own as they were in the
// store when this was made; whatever stands there is the user's. A store that cannot be read counts
// as empty, and one line on standard error says why.
class PresetLibrary {
 public:
  // Throws FileError for a user who has no store.
  explicit PresetLibrary(const World& world);

  const std::vector<TuningPreset>& own() const { return own_; }
  bool isReadable() const { return readable_; }
  const std::filesystem::path& file() const { return store_.fileURL(); }

  // The built-in presets, then the user's own.
  std::vector<TuningPreset> all() const;

  // Throws UsageError as presetNamed.
  TuningPreset named(const std::string& which) const;
  std::vector<TuningPreset> named(const std::vector<std::string>& words) const;

  void add(const std::vector<TuningPreset>& presets);
  void remove(const TuningPreset& preset);

  // Puts the user's presets into the store, whatever it holds by now. What could not be read is
  // kept beside it, and one line on standard error says so. Throws FileError.
  void save() const;

 private:
  const World& world_;
  const PresetStore& store_;
  std::vector<TuningPreset> own_;
  bool readable_ = true;
};

}  // namespace quorvane
