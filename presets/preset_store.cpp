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
  FileChange(path file, const PresetStore::Change& change, std::vector<TuningPreset> ifDamaged = {})
      : file_(std::move(file)), change_(change), ifDamaged_(std::move(ifDamaged)) {}

  std::optional<SharedFile::Update> operator()(const std::optional<std::string>& content) {
    damage_.clear();
    const std::vector<TuningPreset> before = content ? presetsIn(*content) : Presets();
    presets_ = before;
    change_(presets_);
    if (presets_ == before) {
      if (!damage_.empty()) throw DecodingError(damage_);
      return std::nullopt;
    }
    return update();
  }

  // Also writes when the list is unchanged.
  std::optional<SharedFile::Update> replace(const std::optional<std::string>& content) {
    damage_.clear();
    if (content) presetsIn(*content);
    change_(presets_);
    return update();
  }

  PresetStore::Contents contents(const SharedFile::Result& result) {
    return {std::move(presets_), result.version, std::move(damage_), result.kept};
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

  SharedFile::Update update() const {
    return {encodePresets(presets_),
            damage_.empty() ? std::nullopt : std::optional(corruptSuffix())};
  }

  const path file_;
  const PresetStore::Change& change_;
  const Presets ifDamaged_;
  Presets presets_;
  std::string damage_;
};

}  // namespace

PresetStore::PresetStore(std::optional<path> fileURL, Clock& clock)
    : fileURL_(fileURL ? std::move(*fileURL) : defaultLocation()), file_(fileURL_, clock) {}

const PresetStore& PresetStore::shared() {
  static const PresetStore store;
  return store;
}

const PresetStore& PresetStore::simulated() {
  static const PresetStore store(dataFolder() / "simulated" / "presets.json");
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
  return {asOwn(decoded(fileURL_, state->content, decodePresets)), state->version, {}, {}};
}

PresetStore::Contents PresetStore::change(const Change& change,
                                          const std::vector<TuningPreset>& ifDamaged) const {
  FileChange file(fileURL_, change, ifDamaged);
  return file.contents(file_.change([&](const auto& content) { return file(content); }));
}

std::optional<PresetStore::Contents> PresetStore::tryChange(
    const Change& change, SharedFile::Place& place,
    const std::vector<TuningPreset>& ifDamaged) const {
  FileChange file(fileURL_, change, ifDamaged);
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
  FileChange file(fileURL_, replace);
  file_.change([&](const auto& content) { return file.replace(content); });
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
