#include <fmt/format.h>

#include <filesystem>
#include <utility>

#include "cli/input_file.h"
#include "cli/json_output.h"
#include "cli/not_understood.h"
#include "cli/preset_commands.h"
#include "cli/preset_library.h"
#include "cli/preset_names.h"
#include "cli/preset_texts.h"
#include "presets/settings_text.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr const char* nameOfInput = "From text";

// The file's name without its extension.
std::string nameAfter(const std::string& file) {
  if (file == standardInput) return nameOfInput;
  std::string name = oneLine(std::filesystem::path(file).stem().string());
  return name.empty() ? nameOfInput : name;
}

// The parts that were not understood are notes: they often are the settings in the game.
std::string notesOf(const std::vector<std::string>& pieces) {
  std::string notes;
  for (const std::string& piece : pieces) {
    if (!notes.empty()) notes += '\n';
    notes += oneLine(piece);
  }
  return notes;
}

}  // namespace

ExitStatus importPresetTextCommand(const CommandContext& context,
                                   const std::vector<std::string>& files,
                                   const std::optional<std::string>& name) {
  if (files.size() > 1) throw UsageError("With --text, presets import takes one file");
  const std::string presetsName = name ? presetName(*name) : nameAfter(files.front());
  const InputFile file = readInputFile(files.front());
  const SettingsInText read = settingsInText(file.content, std::nullopt);
  if (read.values.empty()) {
    throw DecodingError(fmt::format("{}: There is no setting in it", file.name));
  }
  TuningPreset preset;
  preset.name = presetsName;
  preset.notes = notesOf(read.notUnderstood);
  preset.values = read.values;
  const PresetLibrary library = PresetLibrary::withAdded(context.world, {preset});

  printNotUnderstood(context.world, read.notUnderstood);
  for (const auto& [parameter, value] : read.outOfRange) {
    printTo(context.world.err, "Out of range on every base: {} {}\n", parameter.code(), value);
  }
  if (context.options.json) {
    Json document = presetsJson({preset});
    document["notUnderstood"] = read.notUnderstood;
    printJson(context.world, document);
  } else {
    printTo(context.world.out, "Imported \"{}\" ({}) from {}\n", oneLine(preset.name),
            counted(preset.values.size(), "value"), oneLine(file.name));
  }
  printRepeatedName(context.world, library, preset);
  return ExitStatus::done;
}

}  // namespace quorvane
