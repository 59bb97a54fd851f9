#include "cli/preset_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>

#include "cli/context.h"
#include "cli/preset_text.h"
#include "support/text.h"
#include "support/utf8.h"

namespace quorvane {
namespace {

using Presets = std::vector<TuningPreset>;
using Matches = std::vector<const TuningPreset*>;
using Match = std::function<bool(const TuningPreset&)>;

Matches matching(const Matches& presets, const Match& match) {
  Matches found;
  for (const TuningPreset* const preset : presets) {
    if (match(*preset)) found.push_back(preset);
  }
  return found;
}

Matches pointersTo(const Presets& presets) {
  Matches found;
  for (const TuningPreset& preset : presets) found.push_back(&preset);
  return found;
}

struct Scope {
  std::string_view prefix;
  bool isBuiltIn;
};

constexpr std::array<Scope, 2> scopes{{{"builtin:", true}, {"mine:", false}}};

// The matches by id; if there are none, by exact name; if none, by name ignoring case.
Matches answering(const Matches& presets, const std::string& which) {
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

Matches named(const Presets& presets, const std::string& which) {
  for (const Scope& scope : scopes) {
    if (!startsWithIgnoringCase(which, scope.prefix)) continue;
    const Matches inScope = matching(pointersTo(presets), [&](const TuningPreset& preset) {
      return preset.isBuiltIn == scope.isBuiltIn;
    });
    Matches found = answering(inScope, which.substr(scope.prefix.size()));
    if (!found.empty()) return found;
  }
  return answering(pointersTo(presets), which);
}

// Whether a shell leaves the word unchanged between double quotes.
bool isTypeable(const std::string& word) {
  return oneLine(word) == word && !word.starts_with('-') &&
         word.find_first_of("\"$`\\!") == std::string::npos;
}

// A word that names only this preset, as typed: a quoted name, else the id followed by the name.
std::string wordText(const Presets& presets, const TuningPreset& preset) {
  const std::string id = idText(preset);
  for (const std::string& word : wordsNaming(presets, preset)) {
    if (word != id && isTypeable(word)) return fmt::format("\"{}\"", word);
  }
  return fmt::format("{:<36}  {}", id, oneLine(preset.name));
}

// An error message with the names that contain the text, or all names if none does.
std::string unknownText(const Presets& presets, const std::string& which) {
  const std::string part = lowerCase(which);
  Matches similar = matching(pointersTo(presets), [&](const TuningPreset& preset) {
    return lowerCase(preset.name).find(part) != std::string::npos;
  });
  if (similar.empty()) similar = pointersTo(presets);
  std::string text = fmt::format("There is no preset \"{}\". There are:", oneLine(which));
  for (const TuningPreset* const preset : similar) text += "\n  " + oneLine(preset->name);
  return text;
}

// Records that no word can distinguish.
bool areTwins(const TuningPreset& a, const TuningPreset& b) {
  return a.isBuiltIn == b.isBuiltIn && a.id == b.id && a.name == b.name;
}

bool allAre(const Matches& matches, const std::function<bool(const TuningPreset&)>& like) {
  return std::all_of(matches.begin(), matches.end(),
                     [&](const TuningPreset* preset) { return like(*preset); });
}

std::string ambiguousText(const Presets& presets, const Matches& matches,
                          const std::string& which) {
  const TuningPreset& first = *matches.front();
  if (allAre(matches, [&](const TuningPreset& preset) { return areTwins(preset, first); })) {
    return fmt::format(
        "Several presets \"{}\" have the id {}. This deletes the first of them: quorvanectl "
        "presets "
        "delete {}",
        oneLine(first.name), idText(first), idText(first));
  }
  std::string text = fmt::format("Several presets answer to \"{}\". Name one by:", oneLine(which));
  for (const TuningPreset* const preset : matches) text += "\n  " + wordText(presets, *preset);
  return text;
}

// Unicode white space.
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

}  // namespace

const TuningPreset& presetNamed(const Presets& presets, const std::string& which, Twins twins) {
  const Matches found = named(presets, which);
  if (found.empty()) throw UsageError(unknownText(presets, which));
  const TuningPreset& first = *found.front();
  const bool areOne = allAre(found, [&](const TuningPreset& preset) {
    return preset == first || (twins == Twins::takeFirst && areTwins(preset, first));
  });
  if (!areOne) throw UsageError(ambiguousText(presets, found, which));
  return first;
}

std::vector<std::string> wordsNaming(const Presets& presets, const TuningPreset& preset) {
  const std::string scoped = std::string(scopes.at(preset.isBuiltIn ? 0 : 1).prefix) + preset.name;
  std::vector<std::string> words{preset.name, scoped};
  std::erase_if(words,
                [&](const std::string& word) { return named(presets, word) != Matches{&preset}; });
  if (!preset.isBuiltIn) words.push_back(preset.id.text());
  return words;
}

std::string sharedNamesText(const Presets& presets) {
  std::string text;
  for (const TuningPreset& preset : presets) {
    if (named(presets, preset.name) == Matches{&preset}) continue;
    text += "  " + wordText(presets, preset) + "\n";
  }
  return text;
}

std::string presetField(std::string_view field, const std::string& text) {
  if (!isUtf8(text)) throw UsageError(fmt::format("The preset's {} is not UTF-8", field));
  return trimmed(text);
}

std::string presetName(const std::string& text) {
  std::string name = presetField("name", text);
  if (name.empty()) throw UsageError("The preset needs a name");
  return name;
}

}  // namespace quorvane
