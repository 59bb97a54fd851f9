#include "cli/diff_sides.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "cli/base_access.h"
#include "cli/history_records.h"
#include "cli/input_file.h"
#include "cli/preset_library.h"
#include "cli/preset_names.h"
#include "presets/preset_store.h"
#include "presets/settings_text.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::string_view baseWord = "base";
constexpr char presetMark = '#';  // between a file and one of its presets

DiffSide presetSide(const CommandContext& context, const std::string& name) {
  const TuningPreset preset = PresetLibrary(context.world).named(name);
  return {"preset", preset.name, preset.values, {}};
}

// The menu before a write to the chosen base.
DiffSide historySide(const CommandContext& context, const std::string& id) {
  const HistoryRecord record = recordWithID(historyOf(context, chosenBase(context)), id);
  if (!record.menu) {
    throw CommandError("notAvailable", "The history does not have the menu before this write");
  }
  const std::string name =
      fmt::format("before {} ({})", localTimeText(record.time), rawValue(record.action));
  return {"history", name, TuningPreset::capture(record.product(), name, *record.menu).values, {}};
}

// A kind of side that is named by a prefix. To add one, add a row to `prefixes`.
struct SidePrefix {
  std::string_view prefix;
  DiffSide (*read)(const CommandContext& context, const std::string& name);
};

constexpr std::array prefixes{SidePrefix{presetSidePrefix, presetSide},
                              SidePrefix{historySidePrefix, historySide}};

// The file, and the preset to take of it; empty for the only one.
std::pair<std::string, std::string> fileAndPreset(const std::string& word) {
  const std::size_t mark = word.rfind(presetMark);
  std::error_code unknown;
  if (mark == std::string::npos || std::filesystem::exists(word, unknown)) return {word, ""};
  return {word.substr(0, mark), word.substr(mark + 1)};
}

DiffSide textSide(const InputFile& file) {
  SettingsInText read = settingsInText(file.content, std::nullopt);
  if (read.values.empty()) {
    throw DecodingError(fmt::format("{}: There is no setting in it", file.name));
  }
  return {"text", file.name, std::move(read.values), std::move(read.notUnderstood)};
}

DiffSide documentSide(const InputFile& file, const std::string& which) {
  const auto presets = PresetStore::importPresets(file.name, file.content);
  if (presets.empty()) throw DecodingError(file.name + ": There are no presets in it");
  if (which.empty() && presets.size() > 1) {
    std::string message =
        fmt::format("{} has {} presets. Name one of them:", oneLine(file.name), presets.size());
    for (const TuningPreset& preset : presets) {
      message += fmt::format("\n  {}{}{}", oneLine(file.name), presetMark, oneLine(preset.name));
    }
    throw UsageError(message);
  }
  const TuningPreset& preset = which.empty() ? presets.front() : presetNamed(presets, which);
  return {"file", preset.name, preset.values, {}};
}

DiffSide fileSide(const std::string& word) {
  const auto [path, which] = fileAndPreset(word);
  const InputFile file = readInputFile(path);
  return isSettingsDocument(file.content) ? documentSide(file, which) : textSide(file);
}

DiffSide otherSide(const CommandContext& context, const std::string& word) {
  for (const auto& [prefix, read] : prefixes) {
    if (word.starts_with(prefix)) return read(context, word.substr(prefix.size()));
  }
  return fileSide(word);
}

DiffSide baseSide(WheelBase& base) {
  const TuningSnapshot menu = base.fetchTuning(WheelBase::readTimeout);
  const std::string name = fmt::format("{}, set {}", base.info().displayName(), menu.setName());
  return {"base", name, TuningPreset::capture(base.product(), name, menu).values, {}};
}

std::optional<FanatecProduct> attachedProduct(const CommandContext& context) {
  const auto bases = namedBases(context);
  return bases.empty() ? std::nullopt : FanatecProduct::lookup(bases.front().productID);
}

void requireSides(const std::vector<std::string>& words) {
  if (std::count(words.begin(), words.end(), standardInput) > 1) {
    throw UsageError("Only one side can be standard input");
  }
}

}  // namespace

DiffSides readDiffSides(const CommandContext& context, std::vector<std::string> words) {
  if (words.size() == 1) words.insert(words.begin(), std::string(baseWord));
  requireSides(words);
  std::array<std::optional<DiffSide>, 2> sides;
  for (std::size_t i = 0; i < sides.size(); ++i) {
    if (words[i] != baseWord) sides.at(i) = otherSide(context, words[i]);
  }
  DiffSides result;
  if (sides[0] && sides[1]) {
    result.product = attachedProduct(context);
  } else {
    const OpenBase base(context);
    const DiffSide present = baseSide(*base);
    for (auto& side : sides) {
      if (!side) side = present;
    }
    result.product = base->product();
  }
  result.left = std::move(*sides[0]);
  result.right = std::move(*sides[1]);
  return result;
}

}  // namespace quorvane
