#include "ui/presets/preset_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "presets/settings_comparison.h"
#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "support/text.h"

namespace quorvane {
namespace {

// The title up to its explanation in brackets: "Sensitivity".
std::string_view shortTitle(TuningParameter parameter) {
  const std::string_view title = parameter.title();
  return title.substr(0, title.find(" ("));
}

}  // namespace

bool isWord(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  return !MenuText::word(value.parameter, value.value, product).empty();
}

std::string presetValue(const ParameterValue& value, const std::optional<FanatecProduct>& product) {
  return MenuText::presetText(value.parameter, value.value, product);
}

std::string presetSummary(const TuningPreset& preset,
                          const std::optional<FanatecProduct>& product) {
  std::string summary;
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    const auto value = preset.value(parameter);
    if (!value) continue;
    const ParameterValue pair{parameter, *value};
    summary += summary.empty() ? "" : ", ";
    summary += fmt::format("{} {}", shortTitle(parameter), presetValue(pair, product));
    if (!parameter.unit().empty() && !isWord(pair, product)) {
      summary += fmt::format(" {}", parameter.unit());
    }
  }
  return summary.empty() ? "No values" : summary;
}

PresetBadge presetBadge(const TuningPreset& preset, const std::optional<TuningSnapshot>& menu,
                        const std::optional<FanatecProduct>& product) {
  if (!menu || preset.applicable(product).empty()) return {};
  const TuningPreset now = TuningPreset::capture(product, "", *menu);
  const SettingsComparison comparison(now.values, preset.values, product);
  const auto differing =
      std::count_if(comparison.rows().begin(), comparison.rows().end(), [](const ComparedRow& row) {
        return row.right && row.state != ComparedState::same &&
               row.state != ComparedState::notOnBase;
      });
  if (differing == 0) return {PresetBadge::Kind::same, "On the base now"};
  if (const auto stronger = comparison.stronger()) {
    const auto textIn = [&](const TuningPreset& side) {
      return presetValue({*stronger, *side.value(*stronger)}, product);
    };
    return {PresetBadge::Kind::stronger,
            fmt::format("Stronger: {} {} → {}", stronger->code(), textIn(now), textIn(preset))};
  }
  return {PresetBadge::Kind::differs,
          fmt::format("{} {}", differing, differing == 1 ? "differs" : "differ")};
}

std::string applyQuestion(const TuningPreset& preset) {
  return fmt::format("Apply \"{}\" to the active set?", oneLine(preset.name));
}

std::string applyConsequence(const TuningSnapshot& menu, std::size_t staged) {
  const bool isAutoSet = menu.slot() == autoSet;
  std::string text = fmt::format("Values will be written to set {} and verified one by one.",
                                 isAutoSet ? "A (Auto Setup)" : "C (Custom)");
  if (isAutoSet) text += " This is the Auto set, so they will not survive a power cycle.";
  if (staged > 0) {
    text += fmt::format("\nYour {} {} and {} not part of this.", counted(staged, "unsaved change"),
                        staged == 1 ? "stays" : "stay", staged == 1 ? "is" : "are");
  }
  return text;
}

}  // namespace quorvane
