#include "cli/preset_texts.h"

#include <algorithm>

#include "cli/preset_names.h"
#include "cli/preset_text.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {

void setTexts(TuningPreset& preset, const PresetTexts& texts) {
  if (texts.name) preset.name = presetName(*texts.name);
  if (texts.game) preset.game = presetField("game", *texts.game);
  if (texts.source) preset.source = presetField("source", *texts.source);
  if (texts.notes) preset.notes = presetField("note", *texts.notes);
}

void printRepeatedName(const World& world, const PresetLibrary& library,
                       const TuningPreset& preset) {
  const auto presets = library.all();
  const auto sameName = [&](const TuningPreset& other) { return other.name == preset.name; };
  if (std::count_if(presets.begin(), presets.end(), sameName) < 2) return;
  printTo(world.err, "There is now more than one preset \"{}\". This one answers to its id: {}\n",
          oneLine(preset.name), idText(preset));
}

}  // namespace quorvane
