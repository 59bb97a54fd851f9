#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "presets/decoding_error.h"
#include "presets/settings_share_file.h"
#include "presets/tuning_preset.h"
#include "support/file.h"

namespace quorvane {

// The user's own presets in one JSON file, and the files that presets come from and go to. It keeps
// nothing in memory: every operation reads or writes files, and blocks for it. Any thread may call;
// of two saves the later one wins whole.
//
// Failures are FileError (of the file system) and DecodingError (of what a file holds); their texts
// begin with the path concerned.
class PresetStore {
 public:
  // A settings file is a few kilobytes; a longer one than this is refused unread.
  static constexpr std::uint64_t longestImport = std::uint64_t{8} << 20;  // 8 MiB

  // Without a path: "Quorvane/presets.json" in the user's data directory; a user who has none stops
  // the program.
  explicit PresetStore(std::optional<std::filesystem::path> fileURL = std::nullopt);

  // The one in the default place, made on first use.
  static const PresetStore& shared();

  const std::filesystem::path& fileURL() const { return fileURL_; }

  // The presets in the file's order; none when it is missing, unreadable or damaged.
  std::vector<TuningPreset> load() const;

  // The same, but says by an error what is wrong with a file that is there.
  std::vector<TuningPreset> read() const;

  // Replaces the file by the presets that are not built in, and creates its directory when that is
  // missing. A file that load() makes nothing of is kept beside the new one as
  // "presets.json.corrupt-" and the time.
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

 private:
  // Where it is kept; no path when there is nothing to keep.
  std::filesystem::path keepWhatDoesNotLoad() const;

  std::filesystem::path fileURL_;
};

}  // namespace quorvane
