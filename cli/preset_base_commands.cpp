#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "cli/assignments.h"
#include "cli/base_access.h"
#include "cli/json_output.h"
#include "cli/preset_commands.h"
#include "cli/preset_library.h"
#include "cli/preset_names.h"
#include "cli/preset_texts.h"
#include "cli/value_writer.h"
#include "cli/write_plan.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr const char* savedGame = "Custom";

// The codes of the preset that the product's menu lacks.
std::string missingCodes(const TuningPreset& preset, const std::optional<FanatecProduct>& product) {
  const auto available = TuningParameter::available(product);
  std::string codes;
  for (const TuningParameter parameter : preset.parameters()) {
    if (std::find(available.begin(), available.end(), parameter) == available.end()) {
      codes += fmt::format(" {}", parameter.code());
    }
  }
  for (const auto& [code, value] : preset.values) {
    if (!TuningParameter::fromRawValue(code)) codes += " " + oneLine(code);
  }
  return codes;
}

ExitStatus nothingApplicable(const CommandContext& context, const TuningPreset& preset,
                             const std::string& base) {
  const std::string message =
      fmt::format("\"{}\" has no value for {}", oneLine(preset.name), oneLine(base));
  if (context.options.json) printJson(context.world, errorJson("notAvailable", message));
  printTo(context.world.err, "{}\n", message);
  return ExitStatus::failed;
}

void printSaved(const CommandContext& context, const PresetLibrary& library,
                const TuningPreset& preset) {
  if (context.options.json) {
    printJson(context.world, presetsJson({preset}));
  } else {
    printTo(context.world.out, "Saved preset \"{}\" ({})\nYour presets are in {}\n",
            oneLine(preset.name), counted(preset.values.size(), "value"),
            oneLine(library.file().string()));
  }
}

// Saves the preset over the user's own preset of exactly that name; takes its id, and its texts
// that are not given. If there is none, adds it as a new one.
PresetLibrary withReplaced(const World& world, TuningPreset& preset, const PresetTexts& texts) {
  PresetLibrary library(world, PresetLibrary::IfUnreadable::fail);
  std::vector<TuningPreset> sameName = library.own();
  std::erase_if(sameName, [&](const TuningPreset& own) { return own.name != preset.name; });
  if (sameName.empty()) return PresetLibrary::withAdded(world, {preset});
  const TuningPreset before = presetNamed(sameName, preset.name);
  TuningPreset::Values values = std::move(preset.values);
  preset = before;
  preset.values = std::move(values);
  setTexts(preset, texts);
  library.replace(before, preset);
  return library;
}

}  // namespace

ExitStatus applyPresetCommand(const CommandContext& context, const std::string& which,
                              bool isDryRun) {
  const TuningPreset preset = PresetLibrary(context.world).named(which);
  const Interruption interruption = context.world.interruption();
  const OpenBase base(context, isDryRun ? OpenBase::Use::reading : OpenBase::Use::writing);
  const std::vector<ParameterValue> values = preset.applicable(base->product());
  if (values.empty()) return nothingApplicable(context, preset, base->info().displayName());
  if (const std::string codes = missingCodes(preset, base->product()); !codes.empty()) {
    printTo(context.world.err, "Not on the menu of {}, and left out:{}\n",
            oneLine(base->info().displayName()), codes);
  }
  if (isDryRun) return printWritePlan(context, *base, assignmentsOf(values));
  const TuningSnapshot menu = base->fetchTuning(WheelBase::readTimeout);
  return writeValues(context, interruption, *base, menu,
                     {assignmentsOf(values), {HistoryAction::apply, {}, preset.name}});
}

ExitStatus savePresetCommand(const CommandContext& context, const PresetTexts& texts,
                             bool replace) {
  TuningPreset preset;
  preset.game = savedGame;
  setTexts(preset, texts);
  const OpenBase base(context);
  const TuningSnapshot snapshot = base->fetchTuning(WheelBase::readTimeout);
  preset.values = TuningPreset::capture(base->product(), preset.name, snapshot).values;

  const UUID newID = preset.id;
  const PresetLibrary library = replace ? withReplaced(context.world, preset, texts)
                                        : PresetLibrary::withAdded(context.world, {preset});
  printSaved(context, library, preset);
  if (preset.id == newID) printRepeatedName(context.world, library, preset);
  return ExitStatus::done;
}

}  // namespace quorvane
