#pragma once

#include <string>
#include <vector>

#include "cli/context.h"
#include "presets/preset_change.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// The presets that a command works on: the built-in ones, and the user's own as they were in the
// store when this was made, or after its last change; whatever stands there is the user's.
//
// A change is made to what the store holds by then. A damaged store is kept under another name, and
// two lines on standard error say so. A store that cannot be read for another reason is not
// changed. Changes throw FileError and DecodingError; then nothing was changed.
class PresetLibrary {
 public:
  enum class IfUnreadable {
    warn,  // it counts as empty, and one line on standard error says why
    fail,  // FileError, DecodingError
  };

  // Reads the store. Throws FileError for a user who has no store.
  explicit PresetLibrary(const World& world, IfUnreadable ifUnreadable = IfUnreadable::warn);

  // The library after adding presets to the end of the store. Reads nothing before.
  static PresetLibrary withAdded(const World& world, const std::vector<TuningPreset>& presets);

  const std::vector<TuningPreset>& own() const { return own_; }
  bool isReadable() const { return readable_; }
  const std::filesystem::path& file() const { return store_.fileURL(); }

  // The built-in presets, then the user's own.
  std::vector<TuningPreset> all() const;

  // Throws UsageError as presetNamed.
  TuningPreset named(const std::string& which) const;
  std::vector<TuningPreset> named(const std::vector<std::string>& words) const;

  // The same; of records of one id and one name, the first.
  TuningPreset firstNamed(const std::string& which) const;

  // Removes one preset of the user's; one that is gone by then is no failure. Throws FileError
  // also when another program has changed it in between.
  void remove(const TuningPreset& preset);

  // Puts another record in the place of one of the user's. When another program has changed that in
  // between, both stay.
  void replace(const TuningPreset& before, const TuningPreset& after);

 private:
  PresetLibrary(const World& world, const PresetChange& change);
  void apply(const PresetChange& change);

  const World& world_;
  const PresetStore& store_;
  std::vector<TuningPreset> own_;
  bool readable_ = true;
};

}  // namespace quorvane
