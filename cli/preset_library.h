#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/context.h"
#include "presets/preset_change.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// The presets that a command works on: the built-in ones, and a snapshot of the user's own, taken
// from the store at construction and after each change. Every record in the store is the user's.
//
// A change is applied to the store's current content. If its former version cannot be kept, a line
// on standard error says so. A damaged store is kept under another name,
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

  // Replaces all of the user's presets by former ones and returns the library after that.
  static PresetLibrary withRestored(const World& world, const std::vector<TuningPreset>& presets);

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

  // Adds one right after another of the user's presets; at the end if that is no longer there.
  void insertAfter(const TuningPreset& before, const TuningPreset& preset);

  // Moves one of the user's presets and returns its new place, from 0. Throws FileError if another
  // program has deleted it, or the one to put it next to, in the meantime.
  std::size_t move(const TuningPreset& preset, const PresetChange::Destination& destination);

 private:
  PresetLibrary(const World& world, const PresetChange& change);
  void apply(const PresetChange& change);
  std::size_t placeOf(const TuningPreset& preset) const;

  const World& world_;
  const PresetStore& store_;
  std::vector<TuningPreset> own_;
  bool readable_ = true;
};

}  // namespace quorvane
