#include "cli/preset_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <nlohmann/json.hpp>
#include <string_view>

#include "cli/context.h"
#include "cli/preset_text.h"
#include "support/text.h"

namespace quorvane {
namespace {

using Presets = std::vector<TuningPreset>;
using Matches = std::vector<const TuningPreset*>;
using Match = std::function<bool(const TuningPreset&)>;

Matches matching(const Presets& presets, const Match& match) {
  Matches found;
  for (const TuningPreset& preset : presets) {
    if (match(preset)) found.push_back(&preset);
  }
  return found;
}

// Those that answer to the first kind of name that any answers to.
Matches answering(const Presets& presets, const std::string& which) {
  const auto id = UUID::parse(which);
  const std::vector<Match> kinds{
      [&](const TuningPreset& preset) { return id && preset.id == *id; },
      [&](const TuningPreset& preset) { return preset.name == which; },
      [&](const TuningPreset& preset) { return equalIgnoringCase(preset.name, which); },
  };
  for (const Match& kind : kinds) {
    if (Matches found = matching(presets, kind); !found.empty()) return found;
  }
  return {};
}

// The names that contain the text, or all.
std::string unknownText(const Presets& presets, const std::string& which) {
  const std::string part = lowerCase(which);
  Matches similar = matching(presets, [&](const TuningPreset& preset) {
    return lowerCase(preset.name).find(part) != std::string::npos;
  });
  if (similar.empty()) similar = matching(presets, [](const TuningPreset&) { return true; });
  std::string text = fmt::format("There is no preset \"{}\". There are:", oneLine(which));
  for (const TuningPreset* const preset : similar) text += "\n  " + oneLine(preset->name);
  return text;
}

std::string ambiguousText(const Matches& matches, const std::string& which) {
  std::string text =
      fmt::format("Several presets answer to \"{}\". Name one by its id:", oneLine(which));
  for (const TuningPreset* const preset : matches) {
    text += fmt::format("\n  {:<36}  {}", idText(*preset), oneLine(preset->name));
  }
  return text;
}

// Unicode's white space.
constexpr std::array<std::string_view, 25> spaces{
    "\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

// The length of the white space that `text` begins or ends with; 0 without any.
template <typename Stands>
std::size_t spaceLength(Stands stands) {
  const auto* const found = std::find_if(spaces.begin(), spaces.end(), stands);
  return found == spaces.end() ? 0 : found->size();
}

std::string trimmed(std::string_view text) {
  const auto leading = [&](std::string_view space) { return text.starts_with(space); };
  const auto trailing = [&](std::string_view space) { return text.ends_with(space); };
  while (const std::size_t length = spaceLength(leading)) text.remove_prefix(length);
  while (const std::size_t length = spaceLength(trailing)) text.remove_suffix(length);
  return std::string(text);
}

bool isUTF8(const std::string& text) {
  try {
    return !nlohmann::json(text).dump().empty();
  } catch (const nlohmann::json::type_error&) {
    return false;
  }
}

}  // namespace

const TuningPreset& presetNamed(const Presets& presets, const std::string& which) {
  const Matches found = answering(presets, which);
  if (found.empty()) throw UsageError(unknownText(presets, which));
  if (found.size() > 1) throw UsageError(ambiguousText(found, which));
  return *found.front();
}

std::string presetName(const std::string& text) {
  if (!isUTF8(text)) throw UsageError("The preset's name is not UTF-8");
  std::string name = trimmed(text);
  if (name.empty()) throw UsageError("The preset needs a name");
  return name;
}

}  // namespace quorvane
