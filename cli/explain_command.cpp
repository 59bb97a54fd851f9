#include <fmt/format.h>

#include <string>

#include "cli/assignments.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "presets/tuning_preset.h"
#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "protocol/setting_help.h"
#include "support/printing.h"

namespace quorvane {
namespace {

Json presetValuesJson(TuningParameter parameter) {
  Json presets = Json::array();
  for (const TuningPreset& preset : TuningPreset::builtIn()) {
    const auto value = preset.value(parameter);
    presets.push_back({{"name", preset.name}, {"value", value ? Json(*value) : Json(nullptr)}});
  }
  return presets;
}

Json explanationJson(TuningParameter parameter) {
  const SettingHelp& help = helpOf(parameter);
  const ClosedRange range = parameter.allowedRange(std::nullopt);
  return {{"code", parameter.code()},
          {"title", parameter.title()},
          {"what", help.what},
          {"feel", help.feel},
          {"worksWith", help.worksWith},
          {"lowest", range.lower},
          {"highest", range.upper},
          {"step", parameter.step()},
          {"unit", parameter.unit()},
          {"words", MenuText::words(parameter)},
          {"factoryDefault", settingOf(parameter).factory},
          {"presets", presetValuesJson(parameter)}};
}

// "90 to 2520 deg, step 10, or AUTO"; the words alone for a setting without numbers.
std::string valuesThatFit(TuningParameter parameter) {
  const bool hasNumbers = MenuText::hasNumbers(parameter);
  std::string text = hasNumbers ? MenuText::range(parameter, std::nullopt) : std::string();
  for (const std::string& word : MenuText::words(parameter)) {
    if (!text.empty()) text += hasNumbers ? ", or " : ", ";
    text += word;
  }
  return text;
}

void printExplanation(const World& world, TuningParameter parameter) {
  const SettingHelp& help = helpOf(parameter);
  const std::int64_t factory = settingOf(parameter).factory;
  printTo(world.out, "{}  {}\n\n{}\n\n{}\n\n", parameter.code(), parameter.title(), help.what,
          help.feel);
  printTo(world.out, "  Works with       {}\n", help.worksWith);
  printTo(world.out, "  Range            {}\n", valuesThatFit(parameter));
  printTo(world.out, "  Factory default  {}\n\n", MenuText::shortText(parameter, factory, {}));
  printTo(world.out, "Built-in presets\n");
  for (const TuningPreset& preset : TuningPreset::builtIn()) {
    const auto value = preset.value(parameter);
    printTo(world.out, "  {:<40} {}\n", preset.name,
            value ? MenuText::shortText(parameter, *value, {}) : "left alone");
  }
}

}  // namespace

ExitStatus explainCommand(const CommandContext& context, const std::string& code) {
  const TuningParameter parameter = settingNamed(code);
  if (context.options.json) {
    printJson(context.world, explanationJson(parameter));
  } else {
    printExplanation(context.world, parameter);
  }
  return ExitStatus::done;
}

}  // namespace quorvane
