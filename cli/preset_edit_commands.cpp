#include <fmt/format.h>

#include "cli/json_output.h"
#include "cli/preset_commands.h"
#include "cli/preset_library.h"
#include "cli/preset_names.h"
#include "cli/preset_texts.h"
#include "cli/suggestion.h"
#include "presets/preset_copy.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

using Destination = PresetChange::Destination;

void requireTexts(const PresetTexts& texts) {
  if (texts.name || texts.game || texts.source || texts.notes) return;
  throw UsageError("Nothing to edit: give --name, --game, --source or --notes");
}

// One of the user's own presets. Throws UsageError for a built-in one: it "cannot be edited".
TuningPreset ownNamed(const PresetLibrary& library, const std::string& which,
                      std::string_view participle) {
  TuningPreset preset = library.named(which);
  if (!preset.isBuiltIn) return preset;
  throw UsageError(
      fmt::format("\"{}\" is built in and cannot be {}. Make a copy of your own first: {}",
                  oneLine(preset.name), participle, commandText({"presets", "duplicate", which})));
}

Destination nextTo(const PresetLibrary& library, Destination::Where where, const std::string& which,
                   const TuningPreset& moved) {
  const TuningPreset other = ownNamed(library, which, "moved, nor be a place to move to");
  if (other == moved) {
    throw UsageError(fmt::format("\"{}\" cannot be next to itself", oneLine(other.name)));
  }
  return {where, other};
}

void requireOnePlace(const PresetPlace& place) {
  const int given =
      (place.before ? 1 : 0) + (place.after ? 1 : 0) + (place.first ? 1 : 0) + (place.last ? 1 : 0);
  if (given == 1) return;
  throw UsageError("Give one place to move to: --before PRESET, --after PRESET, --first or --last");
}

Destination destinationOf(const PresetLibrary& library, const PresetPlace& place,
                          const TuningPreset& moved) {
  using Where = Destination::Where;
  if (place.before) return nextTo(library, Where::before, *place.before, moved);
  if (place.after) return nextTo(library, Where::after, *place.after, moved);
  return {place.first ? Where::first : Where::last, {}};
}

}  // namespace

ExitStatus editPresetCommand(const CommandContext& context, const std::string& which,
                             const PresetTexts& texts) {
  requireTexts(texts);
  PresetLibrary library(context.world, PresetLibrary::IfUnreadable::fail);
  const TuningPreset before = ownNamed(library, which, "edited");
  TuningPreset after = before;
  setTexts(after, texts);
  library.replace(before, after);
  const bool isRenamed = after.name != before.name;
  if (context.options.json) {
    printJson(context.world, presetsJson({after}));
  } else {
    const std::string earlier =
        isRenamed ? fmt::format(", before \"{}\"", oneLine(before.name)) : "";
    printTo(context.world.out, "Edited preset \"{}\"{}\n", oneLine(after.name), earlier);
  }
  if (isRenamed) printRepeatedName(context.world, library, after);
  return ExitStatus::done;
}

ExitStatus duplicatePresetCommand(const CommandContext& context, const std::string& which,
                                  const std::optional<std::string>& name) {
  PresetLibrary library(context.world, PresetLibrary::IfUnreadable::fail);
  const TuningPreset original = library.named(which);
  const TuningPreset copy =
      copyOf(original, name ? presetName(*name) : copyName(original.name, library.all()));
  library.insertAfter(original, copy);
  if (context.options.json) {
    printJson(context.world, presetsJson({copy}));
  } else {
    printTo(context.world.out, "Duplicated preset \"{}\" as \"{}\"\n", oneLine(original.name),
            oneLine(copy.name));
  }
  printRepeatedName(context.world, library, copy);
  return ExitStatus::done;
}

ExitStatus movePresetCommand(const CommandContext& context, const std::string& which,
                             const PresetPlace& place) {
  requireOnePlace(place);
  PresetLibrary library(context.world, PresetLibrary::IfUnreadable::fail);
  const TuningPreset preset = ownNamed(library, which, "moved");
  const std::size_t index = library.move(preset, destinationOf(library, place, preset));
  if (context.options.json) {
    printJson(context.world, presetsJson(library.own()));
  } else {
    printTo(context.world.out, "Moved preset \"{}\" to place {} of {}\n", oneLine(preset.name),
            index + 1, library.own().size());
  }
  return ExitStatus::done;
}

}  // namespace quorvane
