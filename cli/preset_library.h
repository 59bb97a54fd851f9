#pragma once

#include <string>
#include <vector>

#include "cli/context.h"
#include "presets/preset_change.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// The presets that a command works on: the built-in ones, and a snapshot of the user's own, taken
// from the store at construction and after each change. Every record in the store is the user's.
//
// A change is applied to the store's current content. A damaged store is kept under another name,
// with two lines on standard error about it. A store that cannot be read for another reason is not
// changed. Changes throw FileError and DecodingError; the store is unchanged then.
class PresetLibrary {
 public:
  enum class IfUnreadable {
    warn,  // treat it as empty, with one line on standard error
    fail,  // throw FileError or DecodingError
  };

  // Reads the store. Throws FileError for a user without a store.
  explicit PresetLibrary(const World& world, IfUnreadable ifUnreadable = IfUnreadable::warn);

  // Appends presets to the store and returns the library after that, in one access.
  static PresetLibrary withAdded(const World& world, const std::vector<TuningPreset>& presets);

  const std::vector<TuningPreset>& own() const { return own_; }
  bool isReadable() const { return readable_; }
  const std::filesystem::path& file() const { return store_.fileURL(); }

  // The built-in presets, then the user's own.
  std::vector<TuningPreset> all() const;

  // Throws UsageError like presetNamed().
  TuningPreset named(const std::string& which) const;
  std::vector<TuningPreset> named(const std::vector<std::string>& words) const;

  // The same, but takes the first of several records with the same id and name.
  TuningPreset firstNamed(const std::string& which) const;

  // Removes one of the user's presets. Succeeds if it is already gone. Throws FileError also when
  // another program has changed it in the meantime.
  void remove(const TuningPreset& preset);

  // Replaces one of the user's presets. If another program has changed it in the meantime, keeps
  // both.
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
