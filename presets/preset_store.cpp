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

path defaultLocation() {
  const auto data = userDataDirectory();
  invariant(data.has_value(), "there is no home directory to keep presets in");
  return *data / "Quorvane" / "presets.json";
}

// A parsed document, for as long as it is looked at.
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

// Decodes the content of a file and names the file in what goes wrong.
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

// The content; none when there is no file.
std::optional<std::string> contentOf(const path& file) {
  try {
    return readFile(file);
  } catch (const FileError& error) {
    if (error.isMissingFile()) return std::nullopt;
    throw;
  }
}

std::string corruptSuffix() {
  return fmt::format("corrupt-{:%Y%m%dT%H%M%SZ}",
                     fmt::gmtime(wholeSeconds(WallClock::now()).time_since_epoch().count()));
}

}  // namespace

PresetStore::PresetStore(std::optional<path> fileURL)
    : fileURL_(fileURL ? std::move(*fileURL) : defaultLocation()) {}

const PresetStore& PresetStore::shared() {
  static const PresetStore store;
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
  const auto content = contentOf(fileURL_);
  if (!content) return {};
  return decoded(fileURL_, *content, decodePresets);
}

void PresetStore::save(const std::vector<TuningPreset>& presets) const {
  std::vector<TuningPreset> own;
  std::copy_if(presets.begin(), presets.end(), std::back_inserter(own),
               [](const TuningPreset& preset) { return !preset.isBuiltIn; });
  createDirectories(fileURL_.parent_path());
  const path kept = keepWhatDoesNotLoad();
  try {
    replaceFile(fileURL_, encodePresets(own));
  } catch (const FileError&) {
    // Otherwise every further save would keep the same file once more.
    std::error_code unknown;
    if (std::filesystem::equivalent(kept, fileURL_, unknown)) {
      std::filesystem::remove(kept, unknown);
    }
    throw;
  }
}

path PresetStore::keepWhatDoesNotLoad() const {
  std::error_code unknown;
  // What is no file at all cannot be replaced either.
  if (!std::filesystem::is_regular_file(fileURL_, unknown)) return {};
  try {
    read();
    return {};
  } catch (const std::exception&) {
    return keepBeside(fileURL_, corruptSuffix());
  }
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
  auto presets = decoded(file, readFile(file, longestImport), decodeSettings);
  for (TuningPreset& preset : presets) {
    preset.isBuiltIn = false;
    preset.id = UUID::random();
  }
  return presets;
}

}  // namespace quorvane
