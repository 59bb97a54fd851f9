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
#include "support/version_folder.h"

namespace quorvane {

// The user's own presets in one JSON file, and the import and export of presets. It caches nothing:
// every operation reads or writes files, and blocks for it. Thread-safe.
//
// Several processes may use the file at once. change() and tryChange() lose no update of another
// process: they take a lock, read the file again, apply one change and replace the file (see
// SharedFile). save() takes the same lock, but replaces the whole list: the last save wins.
//
// Throws FileError (file system) and DecodingError (content); messages begin with the path. A file
// that exists and cannot be read is never replaced.
class PresetStore {
 public:
  // The largest file to import. Larger ones are refused unread; a settings file has a few
  // kilobytes.
  static constexpr std::uint64_t longestImport = std::uint64_t{8} << 20;  // 8 MiB

  // Without a path: "Quorvane/presets.json" in the user's data directory. Ends the program if the
  // user has none. Keeps former versions only if it has a folder for them.
  explicit PresetStore(std::optional<std::filesystem::path> fileURL = std::nullopt,
                       Clock& clock = Clock::system(),
                       std::optional<VersionFolder> versions = std::nullopt);

  // The store at the default path, with versions in "Quorvane/preset-versions" in the user's state
  // directory. Created on first use.
  static const PresetStore& shared();

  // The store for simulated bases, separate from the user's own presets: the same in
  // "Quorvane/simulated" of both directories. Created on first use.
  static const PresetStore& simulated();

  const std::filesystem::path& fileURL() const { return fileURL_; }

  // The presets in the file's order; empty when it is missing, unreadable or damaged.
  std::vector<TuningPreset> load() const;

  // Like load(), but throws when the file exists and is unreadable or damaged.
  std::vector<TuningPreset> read() const;

  // The presets in the file, with isBuiltIn cleared, and the file's version. The list is empty when
  // there is no file.
  struct Contents {
    std::vector<TuningPreset> presets;
    std::optional<FileVersion> version;  // none: there is no file

    // Set by a change that replaced a damaged file: the error in it, and the path of the kept copy,
    // "presets.json.corrupt-" and the time.
    std::string damage;
    std::filesystem::path kept;

    // Set by a change that could not keep the former version: the reason. The change itself is
    // made all the same.
    std::string versionFailure;
  };
  Contents contents() const;

  // The current version of the file; none when there is no file.
  std::optional<FileVersion> version() const { return versionOfFile(fileURL_); }

  // Changes the list of presets from the file. May be called again, with a newer list.
  using Change = std::function<void(std::vector<TuningPreset>& presets)>;

  // Applies a change to the file and returns the new contents. Waits up to 2 s for other processes,
  // then throws timeoutError(). Creates the file's directory.
  //
  // For a damaged file, the change starts from `ifDamaged`, and the old file is kept beside the new
  // one. Writes nothing when the change leaves the list unchanged; if the file is damaged too,
  // throws DecodingError.
  //
  // Once the file is replaced, its old content is kept as a former version.
  Contents change(const Change& change, const std::vector<TuningPreset>& ifDamaged = {}) const;

  // Like change(), but does not wait: none when another process is changing the file. Retry with
  // the same place (see SharedFile::tryChange).
  std::optional<Contents> tryChange(const Change& change, SharedFile::Place& place,
                                    const std::vector<TuningPreset>& ifDamaged = {}) const;

  // What change() throws on timeout.
  FileError timeoutError() const { return file_.timeoutError(); }

  // Replaces the content of the file by the presets that are not built in. Creates its directory.
  // Keeps a damaged file, as change() does.
  void save(const std::vector<TuningPreset>& presets) const;

  // A former content of the file.
  struct FormerVersion {
    std::uint32_t number = 0;
    WallSeconds replacedAt;
    std::filesystem::path file;
    std::optional<std::vector<TuningPreset>> presets;  // none when it cannot be read
  };

  // The versions that are kept, at most VersionFolder::mostVersions, the oldest first. Throws
  // FileError when their directory cannot be read.
  std::vector<FormerVersion> formerVersions() const;

  // Writes all the presets, built-in ones included, in the format of the preset file.
  static void exportPresets(const std::vector<TuningPreset>& presets,
                            const std::filesystem::path& destination);

  static void exportShare(const TuningPreset& preset, std::optional<std::string> base,
                          const std::filesystem::path& destination,
                          WallClock::time_point now = WallClock::now());

  // The presets in a share file, an exported list or a file with a single preset, with isBuiltIn
  // cleared and new ids. Duplicate names are kept.
  static std::vector<TuningPreset> importPresets(const std::filesystem::path& file);

  // Imports content that was read already; `file` is for error messages.
  static std::vector<TuningPreset> importPresets(const std::filesystem::path& file,
                                                 const std::string& content);

 private:
  std::filesystem::path fileURL_;
  SharedFile file_;
  std::optional<VersionFolder> versions_;
};

}  // namespace quorvane
