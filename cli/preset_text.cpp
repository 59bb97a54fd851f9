#include "cli/preset_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "protocol/menu_text.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::size_t widestColumn = 52;  // longer texts shift the columns after them

std::size_t width(std::string_view text) {
  const auto starts = std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;  // not a UTF-8 continuation byte
  });
  return static_cast<std::size_t>(starts);
}

std::string padded(const std::string& text, std::size_t columns) {
  return text + std::string(columns - std::min(columns, width(text)), ' ');
}

std::size_t columnOf(const std::vector<TuningPreset>& presets, std::string TuningPreset::*field) {
  std::size_t widest = 0;
  for (const TuningPreset& preset : presets) {
    widest = std::max(widest, width(oneLine(preset.*field)));
  }
  return std::min(widest, widestColumn);
}

std::string fieldText(std::string_view title, const std::string& text) {
  return fmt::format("  {:<6}  {}\n", title, text.empty() ? "none" : oneLine(text));
}

// Notes may have several lines.
std::string notesText(std::string_view notes) {
  std::string text;
  std::size_t end = 0;
  for (std::size_t begin = 0; begin < notes.size(); begin = end + 1) {
    end = std::min(notes.find('\n', begin), notes.size());
    text += fmt::format("  {:<6}  {}\n", begin == 0 ? "Notes" : "",
                        oneLine(notes.substr(begin, end - begin)));
  }
  return text.empty() ? fieldText("Notes", "") : text;
}

std::string rowText(std::string_view code, const std::string& value, std::string_view title) {
  return fmt::format("  {:<4} {:<24} {}\n", code, value, title);
}

// In a preset, 0 degrees means the automatic steering angle.
std::string presetValueText(TuningParameter parameter, std::int64_t value) {
  if (parameter.isSpecial(value, {})) return MenuText::presetText(parameter, value, {});
  return MenuText::text(parameter, value, {});
}

std::string valuesText(const TuningPreset& preset) {
  std::string text;
  for (const TuningParameter parameter : preset.parameters()) {
    text += rowText(parameter.code(), presetValueText(parameter, *preset.value(parameter)),
                    parameter.title());
  }
  for (const auto& [code, value] : preset.values) {
    if (TuningParameter::fromRawValue(code)) continue;
    text += rowText(oneLine(code), std::to_string(value), "(no setting of the menu)");
  }
  return text.empty() ? "  No values\n" : text;
}

}  // namespace

std::string idText(const TuningPreset& preset) {
  return preset.isBuiltIn ? "(built in)" : preset.id.text();
}

std::string listText(const std::vector<TuningPreset>& presets) {
  const std::size_t names = columnOf(presets, &TuningPreset::name);
  const std::size_t games = columnOf(presets, &TuningPreset::game);
  std::string text;
  for (const TuningPreset& preset : presets) {
    text +=
        fmt::format("  {}  {}  {:>9}", padded(oneLine(preset.name), names),
                    padded(oneLine(preset.game), games), counted(preset.values.size(), "value"));
    if (!preset.source.empty()) text += "  " + oneLine(preset.source);
    text += '\n';
  }
  return text;
}

std::string fullText(const TuningPreset& preset) {
  return fmt::format("{}\n", oneLine(preset.name)) + fieldText("Game", preset.game) +
         fieldText("Source", preset.source) + notesText(preset.notes) +
         fieldText("Id", idText(preset)) + "\n" + valuesText(preset);
}

}  // namespace quorvane
