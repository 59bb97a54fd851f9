#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "presets/decoding_error.h"
#include "presets/settings_share_file.h"
#include "presets/tuning_preset.h"
#include "support/file.h"
#include "support/shared_file.h"

namespace quorvane {

// The user's own presets in one JSON file, and the files that presets come from and go to. It keeps
// nothing in memory: every operation reads or writes files, and blocks for it. Any thread may call.
//
// Several processes may use the file at once. change() and tryChange() lose nothing of what others
// write: they take a lock, read the file afresh, apply one change and replace the file (SharedFile
// tells how). save() takes the same lock, but replaces the list whole: of two saves the later one
// wins.
//
// Failures are FileError (of the file system) and DecodingError (of what a file holds); their texts
// begin with the path concerned. A file that is there and cannot be read is never replaced.
class PresetStore {
 public:
  // A settings file is a few kilobytes; a longer one than this is refused unread.
  static constexpr std::uint64_t longestImport = std::uint64_t{8} << 20;  // 8 MiB

  // Without a path: "Quorvane/presets.json" in the user's data directory; a user who has none stops
  // the program.
  explicit PresetStore(std::optional<std::filesystem::path> fileURL = std::nullopt,
                       Clock& clock = Clock::system());

  // The one in the default place, made on first use.
  static const PresetStore& shared();

  // The one of programs with simulated bases, which leave the user's own presets alone:
  // "Quorvane/simulated/presets.json" in the same directory. Made on first use.
  static const PresetStore& simulated();

  const std::filesystem::path& fileURL() const { return fileURL_; }

  // The presets in the file's order; none when it is missing, unreadable or damaged.
  std::vector<TuningPreset> load() const;

  // The same, but says by an error what is wrong with a file that is there.
  std::vector<TuningPreset> read() const;

  // The presets in the file, all of them as the user's own, and the version that they are of; an
  // empty list when there is no file.
  struct Contents {
    std::vector<TuningPreset> presets;
    std::optional<FileVersion> version;  // none: there is no file

    // Set by a change that replaced a damaged file: what was wrong with it, and the name that it
    // was kept under, "presets.json.corrupt-" and the time.
    std::string damage;
    std::filesystem::path kept;
  };
  Contents contents() const;

  // Of the file as it is now; none when there is none.
  std::optional<FileVersion> version() const { return versionOfFile(fileURL_); }

  // Gets the presets in the file and changes them. May be called more than once, with other lists.
  using Change = std::function<void(std::vector<TuningPreset>& presets)>;

  // Applies a change to the file and returns what it holds then. Waits up to 2 s for other
  // processes, and throws FileError then. Creates the file's directory.
  //
  // A damaged file counts as a list with `ifDamaged` and is kept beside the new one. When the
  // change leaves the list as it is, nothing is written; then a damaged file throws DecodingError.
  Contents change(const Change& change, const std::vector<TuningPreset>& ifDamaged = {}) const;

  // The same without waiting: none when another process is changing the file. The place is that in
  // line for a further try.
  std::optional<Contents> tryChange(const Change& change, SharedFile::Place& place,
                                    const std::vector<TuningPreset>& ifDamaged = {}) const;

  // What change() throws when it has waited long enough.
  FileError timeoutError() const { return file_.timeoutError(); }

  // Replaces the file by the presets that are not built in, and creates its directory when that is
  // missing. A damaged file is kept as by change().
  void save(const std::vector<TuningPreset>& presets) const;

  // Writes the presets, built in or not, in the layout of the preset file.
  static void exportPresets(const std::vector<TuningPreset>& presets,
                            const std::filesystem::path& destination);

  static void exportShare(const TuningPreset& preset, std::optional<std::string> base,
                          const std::filesystem::path& destination,
                          WallClock::time_point now = WallClock::now());

  // The presets in a share file, an exported list or a file with a single preset: as the user's
  // own, with new ids. Repeated names are left alone.
  static std::vector<TuningPreset> importPresets(const std::filesystem::path& file);

  // The same of what was read already; errors name the file.
  static std::vector<TuningPreset> importPresets(const std::filesystem::path& file,
                                                 const std::string& content);

 private:
  std::filesystem::path fileURL_;
  SharedFile file_;
};

}  // namespace quorvane
