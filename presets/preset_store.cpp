#include "presets/preset_store.h"

#include <fmt/chrono.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <new>
#include <utility>

#include "presets/json_reader.h"
#include "presets/preset_coding.h"
#include "support/invariant.h"
#include "support/user_directories.h"

namespace quorvane {
namespace {

using std::filesystem::path;

path dataFolder() {
  const auto data = userDataDirectory();
  invariant(data.has_value(), "there is no home directory to keep presets in");
  return *data / "Quorvane";
}

// In the user's state directory. None for a user without one.
std::optional<VersionFolder> versionsIn(const path& folder) {
  const auto state = userStateDirectory();
  if (!state) return std::nullopt;
  return VersionFolder(*state / folder / "preset-versions");
}

path defaultLocation() { return dataFolder() / "presets.json"; }

// RAII for a parsed document: calls dismantle().
class Document {
 public:
  explicit Document(const std::string& content) : json_(parseJSON(content)) {}
  ~Document() { dismantle(json_); }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  const JSONValue& json() const { return json_; }

 private:
  JSONValue json_;
};

// Decodes the content of a file; errors begin with its path.
template <typename Decode>
auto decoded(const path& file, const std::string& content, Decode decode) {
  try {
    return decode(Document(content).json());
  } catch (const DecodingError& error) {
    throw DecodingError(fmt::format("{}: {}", file.string(), error.what()));
  } catch (const std::bad_alloc&) {
    throw FileError(file, ENOMEM);
  }
}

std::string corruptSuffix() {
  return fmt::format("corrupt-{:%Y%m%dT%H%M%SZ}",
                     fmt::gmtime(wholeSeconds(WallClock::now()).time_since_epoch().count()));
}

// Presets in the user's file are never built in.
std::vector<TuningPreset> asOwn(std::vector<TuningPreset> presets) {
  for (TuningPreset& preset : presets) preset.isBuiltIn = false;
  return presets;
}

// Adapts a change of the list of presets to SharedFile::Change, and keeps the result.
class FileChange {
 public:
  FileChange(path file, const std::optional<VersionFolder>& versions,
             const PresetStore::Change& change, std::vector<TuningPreset> ifDamaged = {})
      : file_(std::move(file)),
        versions_(versions),
        change_(change),
        ifDamaged_(std::move(ifDamaged)) {}

  std::optional<SharedFile::Update> operator()(const std::optional<std::string>& content) {
    damage_.clear();
    const std::vector<TuningPreset> before = content ? presetsIn(*content) : Presets();
    presets_ = before;
    change_(presets_);
    if (presets_ == before) {
      if (!damage_.empty()) throw DecodingError(damage_);
      return std::nullopt;
    }
    return update(content);
  }

  // Also writes when the list is unchanged.
  std::optional<SharedFile::Update> replace(const std::optional<std::string>& content) {
    damage_.clear();
    if (content) presetsIn(*content);
    change_(presets_);
    return update(content);
  }

  PresetStore::Contents contents(const SharedFile::Result& result) {
    return {std::move(presets_), result.version, std::move(damage_), result.kept,
            std::move(versionFailure_)};
  }

 private:
  using Presets = std::vector<TuningPreset>;

  Presets presetsIn(const std::string& content) {
    try {
      return asOwn(decoded(file_, content, decodePresets));
    } catch (const DecodingError& error) {
      damage_ = error.what();
      return ifDamaged_;
    }
  }

  SharedFile::Update update(const std::optional<std::string>& former) {
    if (!damage_.empty()) return {encodePresets(presets_), corruptSuffix()};
    SharedFile::Update update{encodePresets(presets_), std::nullopt};
    if (former && versions_) update.whenReplaced = [this, former] { keepVersion(*former); };
    return update;
  }

  // After the replacement: on a full disk, the change comes first. A damaged file is kept beside
  // the new one instead.
  void keepVersion(const std::string& content) {
    try {
      versions_->keep(content, wholeSeconds(WallClock::now()));
    } catch (const std::exception& error) {
      versionFailure_ = error.what();
    }
  }

  const path file_;
  const std::optional<VersionFolder>& versions_;
  const PresetStore::Change& change_;
  const Presets ifDamaged_;
  Presets presets_;
  std::string damage_;
  std::string versionFailure_;
};

// None when the file cannot be read.
std::optional<std::vector<TuningPreset>> presetsIfReadable(const path& file) {
  try {
    return asOwn(decoded(file, readFile(file, VersionFolder::mostBytes), decodePresets));
  } catch (const std::runtime_error&) {  // FileError, DecodingError
    return std::nullopt;
  }
}

}  // namespace

PresetStore::PresetStore(std::optional<path> fileURL, Clock& clock,
                         std::optional<VersionFolder> versions)
    : fileURL_(fileURL ? std::move(*fileURL) : defaultLocation()),
      file_(fileURL_, clock),
      versions_(std::move(versions)) {}

const PresetStore& PresetStore::shared() {
  static const PresetStore store({}, Clock::system(), versionsIn("Quorvane"));
  return store;
}

const PresetStore& PresetStore::simulated() {
  static const PresetStore store(dataFolder() / "simulated" / "presets.json", Clock::system(),
                                 versionsIn("Quorvane/simulated"));
  return store;
}

std::vector<TuningPreset> PresetStore::load() const {
  try {
    return read();
  } catch (const std::exception&) {
    return {};
  }
}

std::vector<TuningPreset> PresetStore::read() const {
  const auto state = readFileStateIfAny(fileURL_);
  if (!state) return {};
  return decoded(fileURL_, state->content, decodePresets);
}

PresetStore::Contents PresetStore::contents() const {
  const auto state = readFileStateIfAny(fileURL_);
  if (!state) return {};
  return {asOwn(decoded(fileURL_, state->content, decodePresets)), state->version, {}, {}, {}};
}

PresetStore::Contents PresetStore::change(const Change& change,
                                          const std::vector<TuningPreset>& ifDamaged) const {
  FileChange file(fileURL_, versions_, change, ifDamaged);
  return file.contents(file_.change([&](const auto& content) { return file(content); }));
}

std::optional<PresetStore::Contents> PresetStore::tryChange(
    const Change& change, SharedFile::Place& place,
    const std::vector<TuningPreset>& ifDamaged) const {
  FileChange file(fileURL_, versions_, change, ifDamaged);
  const auto result = file_.tryChange([&](const auto& content) { return file(content); }, place);
  if (!result) return std::nullopt;
  return file.contents(*result);
}

void PresetStore::save(const std::vector<TuningPreset>& presets) const {
  const Change replace = [&](std::vector<TuningPreset>& list) {
    list.clear();
    std::copy_if(presets.begin(), presets.end(), std::back_inserter(list),
                 [](const TuningPreset& preset) { return !preset.isBuiltIn; });
  };
  FileChange file(fileURL_, versions_, replace);
  file_.change([&](const auto& content) { return file.replace(content); });
}

std::vector<PresetStore::FormerVersion> PresetStore::formerVersions() const {
  if (!versions_) return {};
  const auto kept = versions_->versions();
  const std::size_t count = std::min(kept.size(), VersionFolder::mostVersions);
  std::vector<FormerVersion> result;
  std::transform(kept.end() - static_cast<std::ptrdiff_t>(count), kept.end(),
                 std::back_inserter(result), [](const VersionFolder::Version& version) {
                   return FormerVersion{version.number, version.time, version.file,
                                        presetsIfReadable(version.file)};
                 });
  return result;
}

void PresetStore::exportPresets(const std::vector<TuningPreset>& presets, const path& destination) {
  replaceFile(destination, encodePresets(presets));
}

void PresetStore::exportShare(const TuningPreset& preset, std::optional<std::string> base,
                              const path& destination, WallClock::time_point now) {
  replaceFile(destination, encodeShareFile({std::string(SettingsShareFile::currentFormat),
                                            wholeSeconds(now), std::move(base), preset}));
}

std::vector<TuningPreset> PresetStore::importPresets(const path& file) {
  return importPresets(file, readFile(file, longestImport));
}

std::vector<TuningPreset> PresetStore::importPresets(const path& file, const std::string& content) {
  auto presets = decoded(file, content, decodeSettings);
  for (TuningPreset& preset : presets) {
    preset.isBuiltIn = false;
    preset.id = UUID::random();
  }
  return presets;
}

}  // namespace quorvane
