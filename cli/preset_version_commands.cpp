#include <fmt/format.h>

#include <algorithm>

#include "cli/json_output.h"
#include "cli/preset_commands.h"
#include "cli/preset_library.h"
#include "presets/preset_difference.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

using FormerVersion = PresetStore::FormerVersion;
using PresetsIfReadable = std::optional<std::vector<TuningPreset>>;

// One line of the list.
struct VersionRow {
  FormerVersion version;
  std::optional<std::string> change;  // that replaced it; none when it is not known
};

PresetsIfReadable presentPresets(const PresetStore& store) {
  try {
    return store.contents().presets;
  } catch (const std::runtime_error&) {  // FileError, DecodingError
    return std::nullopt;
  }
}

// The latest version first.
std::vector<VersionRow> versionRows(const PresetStore& store) {
  std::vector<FormerVersion> versions = store.formerVersions();
  std::reverse(versions.begin(), versions.end());
  PresetsIfReadable next = presentPresets(store);
  std::vector<VersionRow> rows;
  for (const FormerVersion& version : versions) {
    const bool isKnown = next && version.presets;
    rows.push_back(
        {version, isKnown ? std::optional(differenceText(*version.presets, *next)) : std::nullopt});
    next = version.presets;
  }
  return rows;
}

Json rowJson(const VersionRow& row) {
  const auto& [version, change] = row;
  return {{"number", version.number},
          {"replacedAt", iso8601(version.replacedAt)},
          {"presetCount", version.presets ? Json(version.presets->size()) : Json()},
          {"change", change ? Json(*change) : Json()}};
}

std::string changeText(const VersionRow& row) {
  if (!row.version.presets) return "cannot be read";
  if (!row.change) return "not known";
  return row.change->empty() ? "nothing changed" : oneLine(*row.change);
}

std::string rowText(const VersionRow& row) {
  const auto& presets = row.version.presets;
  return fmt::format("  {:>6}  {}  {:>11}  {}\n", row.version.number,
                     localTimeText(row.version.replacedAt),
                     presets ? counted(presets->size(), "preset") : "-", changeText(row));
}

std::string listText(const std::vector<VersionRow>& rows) {
  if (rows.empty()) return "There are no former versions of your presets yet\n";
  std::string text = "Your presets as they were before each change, and what changed then\n";
  for (const VersionRow& row : rows) text += rowText(row);
  return text + "To go back to one: quorvanectl presets restore NUMBER --yes\n";
}

FormerVersion versionNumbered(const PresetStore& store, const std::string& word) {
  const auto number = parseInteger(word);
  const auto versions = store.formerVersions();
  const auto found = std::find_if(
      versions.rbegin(), versions.rend(),
      [&](const FormerVersion& version) { return number && version.number == *number; });
  if (found != versions.rend()) return *found;
  throw UsageError(fmt::format(
      R"(There is no version "{}" of your presets. "quorvanectl presets versions" lists them)",
      oneLine(word)));
}

}  // namespace

ExitStatus presetVersionsCommand(const CommandContext& context) {
  const std::vector<VersionRow> rows = versionRows(context.world.presets());
  if (!context.options.json) {
    printTo(context.world.out, "{}", listText(rows));
    return ExitStatus::done;
  }
  Json versions = Json::array();
  for (const VersionRow& row : rows) versions.push_back(rowJson(row));
  printJson(context.world, {{"versions", std::move(versions)}});
  return ExitStatus::done;
}

ExitStatus restorePresetsCommand(const CommandContext& context, const std::string& number,
                                 bool yes) {
  const FormerVersion version = versionNumbered(context.world.presets(), number);
  // Reads it again for the error if it cannot be read.
  const auto presets =
      version.presets ? *version.presets : PresetStore(version.file).contents().presets;
  const std::string count = counted(presets.size(), "preset");
  if (!yes) {
    throw UsageError(fmt::format(
        "This replaces all of your presets by version {} of {} ({}). The present ones are kept as "
        "a version. Run it again with --yes",
        version.number, localTimeText(version.replacedAt), count));
  }
  const auto library = PresetLibrary::withRestored(context.world, presets);
  if (context.options.json) {
    printJson(context.world, presetsJson(library.own()));
  } else {
    printTo(context.world.out, "Your presets are those of version {} again ({})\n", version.number,
            count);
  }
  return ExitStatus::done;
}

}  // namespace quorvane
