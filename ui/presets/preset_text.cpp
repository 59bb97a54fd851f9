#include "ui/presets/preset_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "app/staging.h"
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

// The settings that make the wheel pull harder.
constexpr std::array strengths{TuningParameter::Case::forceFeedback,
                               TuningParameter::Case::forceEffect,
                               TuningParameter::Case::fullForce};
constexpr std::int64_t muchStronger = 25;

// The setting that a preset raises so far that the wheel could hurt unprepared hands: by much, or
// with the product of two strengths grown by half.
std::optional<ParameterValue> raised(const TuningPreset& preset, const TuningSnapshot& menu,
                                     const std::optional<FanatecProduct>& product) {
  std::optional<ParameterValue> most;
  std::int64_t mostBy = 0;
  for (const ParameterValue& wanted : preset.applicable(product)) {
    const auto by = wanted.value - menu.value(wanted.parameter, product);
    const bool isStrength =
        std::find(strengths.begin(), strengths.end(), wanted.parameter) != strengths.end();
    if (!isStrength || by <= mostBy) continue;
    most = wanted;
    mostBy = by;
  }
  if (mostBy >= muchStronger) return most;
  const auto total = [&](auto valueOf) {
    return valueOf(TuningParameter::forceFeedback) * valueOf(TuningParameter::forceEffect);
  };
  const auto now = total([&](TuningParameter p) { return menu.value(p, product); });
  const auto then =
      total([&](TuningParameter p) { return preset.value(p).value_or(menu.value(p, product)); });
  return 2 * then >= 3 * now && then > now ? most : std::nullopt;
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
  const std::vector<ParameterValue> values = preset.applicable(product);
  if (!menu || values.empty()) return {};
  const auto differing = std::count_if(
      values.begin(), values.end(),
      [&](const ParameterValue& value) { return !isCurrentValue(value, menu, product); });
  if (differing == 0) return {PresetBadge::Kind::same, "On the base now"};
  if (const auto more = raised(preset, *menu, product)) {
    const ParameterValue now{more->parameter, menu->value(more->parameter, product)};
    return {PresetBadge::Kind::stronger,
            fmt::format("Stronger: {} {} → {}", more->parameter.code(), presetValue(now, product),
                        presetValue(*more, product))};
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
