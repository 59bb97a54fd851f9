#include "cli/preset_commands.h"

#include <fmt/format.h>

#include "cli/json_output.h"
#include "cli/preset_library.h"
#include "cli/preset_names.h"
#include "cli/preset_text.h"
#include "presets/preset_search.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

std::string ownText(const PresetLibrary& library) {
  if (!library.isReadable()) return "  None that can be read.\n";
  if (!library.own().empty()) return listText(library.own());
  return "  None yet. Save the base's menu as your first: quorvanectl presets save NAME\n";
}

bool isFilter(const PresetFilter& filter) { return !filter.search.empty() || filter.game; }

using Presets = std::vector<TuningPreset>;

Presets matching(Presets presets, const PresetFilter& filter) {
  const PresetSearch search(filter.search);
  std::erase_if(presets, [&](const TuningPreset& preset) {
    return (filter.game && !isForGame(preset, *filter.game)) || !search.matches(preset);
  });
  return presets;
}

std::string matchesText(const Presets& presets) {
  return presets.empty() ? "  None that match.\n" : listText(presets);
}

std::string sectionsText(const PresetLibrary& library, const PresetFilter& filter) {
  const bool isAll = !isFilter(filter);
  return fmt::format("Built in\n{}\nYour own\n{}",
                     matchesText(matching(TuningPreset::builtIn(), filter)),
                     isAll || !library.isReadable() ? ownText(library)
                                                    : matchesText(matching(library.own(), filter)));
}

}  // namespace

ExitStatus listPresetsCommand(const CommandContext& context, const PresetFilter& filter) {
  const PresetLibrary library(context.world);
  if (context.options.json) {
    printJson(context.world, presetsJson(matching(library.all(), filter)));
    return ExitStatus::done;
  }
  printTo(context.world.out, "{}", sectionsText(library, filter));
  const std::string shared = isFilter(filter) ? "" : sharedNamesText(library.all());
  if (!shared.empty()) printTo(context.world.out, "\nNames that several share; type\n{}", shared);
  return ExitStatus::done;
}

ExitStatus showPresetCommand(const CommandContext& context, const std::string& which) {
  const TuningPreset preset = PresetLibrary(context.world).named(which);
  if (context.options.json) {
    printJson(context.world, presetsJson({preset}));
  } else {
    printTo(context.world.out, "{}", fullText(preset));
  }
  return ExitStatus::done;
}

ExitStatus deletePresetCommand(const CommandContext& context, const std::string& which) {
  PresetLibrary library(context.world, PresetLibrary::IfUnreadable::fail);
  const TuningPreset preset = library.firstNamed(which);
  const std::string name = oneLine(preset.name);
  if (preset.isBuiltIn) {
    throw UsageError(fmt::format("\"{}\" is built in and cannot be deleted", name));
  }
  library.remove(preset);
  if (context.options.json) {
    printJson(context.world, presetsJson({preset}));
  } else {
    printTo(context.world.out, "Deleted preset \"{}\"\n", name);
  }
  return ExitStatus::done;
}

}  // namespace quorvane
