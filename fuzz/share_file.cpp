#include <algorithm>
#include <vector>

#include "fuzz/decoding.h"
#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "fuzz/scratch.h"
#include "presets/preset_coding.h"
#include "presets/preset_store.h"

namespace quorvane::Fuzz {
namespace {

using Imported = std::optional<std::vector<TuningPreset>>;

constexpr const char* importedName = "a.quorvane";
constexpr const char* exportedName = "b.quorvane";

void expectShared(const SettingsShareFile& file) {
  const std::string text = encodeShareFile(file);
  const auto again = decodedOrRefused(text, decodeShareFile);
  invariant(again == file, "a share file comes back as it was written");
  invariant(encodeShareFile(*again) == text, "a share file is written the same way twice");
}

Imported importedFrom(const std::filesystem::path& file) {
  try {
    return PresetStore::importPresets(file);
  } catch (const DecodingError& error) {
    invariant(std::string_view(error.what()).starts_with(file.string() + ": "),
              "a refusal names the file");
    return std::nullopt;
  }
}

// Whether `imported` is a copy with a new id that is not built in.
bool isImportOf(const TuningPreset& imported, const TuningPreset& original) {
  TuningPreset same = original;
  same.id = imported.id;
  same.isBuiltIn = false;
  return imported == same && imported.id != original.id;
}

void expectImported(const Imported& imported, const Imported& wanted) {
  invariant(imported.has_value() == wanted.has_value(), "what decodes can be imported");
  if (!imported) return;
  invariant(
      std::equal(imported->begin(), imported->end(), wanted->begin(), wanted->end(), isImportOf),
      "an import has the values of its file");
}

}  // namespace

void shareFile(ByteView bytes) {
  const std::string text = textOf(bytes);
  if (const auto file = decodedOrRefused(text, decodeShareFile)) expectShared(*file);

  const ScratchDirectory directory;
  writeFile(directory / importedName, text);
  const Imported wanted = decodedOrRefused(text, decodeSettings);
  const Imported imported = importedFrom(directory / importedName);
  expectImported(imported, wanted);
  if (!imported || imported->empty()) return;
  PresetStore::exportPresets(*imported, directory / exportedName);
  expectImported(importedFrom(directory / exportedName), imported);
  PresetStore::exportShare(imported->front(), importedName, directory / exportedName);
  expectImported(importedFrom(directory / exportedName), {{imported->front()}});
}

}  // namespace quorvane::Fuzz
