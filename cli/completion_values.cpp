#include "cli/completion_values.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "cli/base_access.h"
#include "cli/diff_sides.h"
#include "cli/history_text.h"
#include "cli/preset_library.h"
#include "cli/preset_names.h"
#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "support/text.h"

namespace quorvane {
namespace {

using Candidates = std::vector<CompletionCandidate>;

constexpr std::int64_t mostNumbers = 21;  // a longer list is less useful than the range

// Splits a type name such as "standard|advanced" into its words.
Candidates alternatives(const std::string& typeName) {
  Candidates words;
  std::size_t end = 0;
  for (std::size_t begin = 0; begin <= typeName.size(); begin = end + 1) {
    end = std::min(typeName.find('|', begin), typeName.size());
    words.push_back({typeName.substr(begin, end - begin), ""});
  }
  return words;
}

Candidates sets() {
  Candidates numbers;
  for (std::int64_t set = tuningSets.lower; set <= tuningSets.upper; ++set) {
    numbers.push_back({std::to_string(set), "Set"});
  }
  return numbers;
}

Candidates codes(const std::vector<std::string>& given) {
  const auto isGiven = [&](TuningParameter parameter) {
    return std::any_of(given.begin(), given.end(), [&](const std::string& word) {
      return equalIgnoringCase(word.substr(0, word.find('=')), parameter.code());
    });
  };
  Candidates result;
  for (const TuningParameter parameter : TuningParameter::adjustable(std::nullopt)) {
    if (isGiven(parameter)) continue;
    result.push_back({std::string(parameter.code()) + "=", std::string(parameter.title())});
  }
  return result;
}

Candidates settings() {
  Candidates result;
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    result.push_back({std::string(parameter.code()), std::string(parameter.title())});
  }
  return result;
}

// The parameter's words, or its numbers when they are few. `lead` is "CODE=" as it was typed.
Candidates valuesOf(TuningParameter parameter, const std::string& lead) {
  Candidates result;
  const std::string title(parameter.title());
  for (const std::string& word : MenuText::words(parameter)) {
    const auto label = parameter.label(MenuText::parse(parameter, word).value_or(0), std::nullopt);
    const bool explains = label && *label != word;
    result.push_back({lead + word, explains ? std::string(*label) : title});
  }
  const ClosedRange range = parameter.allowedRange(std::nullopt);
  if (!result.empty() || (range.upper - range.lower) / parameter.step() >= mostNumbers) {
    return result;
  }
  for (std::int64_t value = range.lower; value <= range.upper; value += parameter.step()) {
    result.push_back({lead + std::to_string(value), title});
  }
  return result;
}

Candidates assignments(const CompletionPlace& place) {
  const std::size_t equals = place.typed.find('=');
  if (equals == std::string::npos) return codes(place.positional);
  const auto parameter = TuningParameter::named(place.typed.substr(0, equals));
  return parameter ? valuesOf(*parameter, place.typed.substr(0, equals + 1)) : Candidates();
}

Candidates products() {
  Candidates result;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (!product.hasTuningMenu()) continue;
    result.push_back({fmt::format("{:04x}", product.productID), std::string(product.name)});
  }
  return result;
}

Candidates devices(const World& world) {
  const GlobalOptions any;
  Candidates result;
  for (const HIDDeviceInfo& base : namedBases({world, any})) {
    result.push_back({base.id, base.displayName()});
  }
  return result;
}

// The subcommands of the command that `words` name, such as {"presets"}.
Candidates commandsBelow(const CLI::App& app, const std::vector<std::string>& words) {
  const CLI::App* group = &app;
  for (const std::string& word : words) {
    const auto named = group->get_subcommands(
        [&](const CLI::App* command) { return command->get_name() == word; });
    if (named.empty()) return {};
    group = named.front();
  }
  Candidates result;
  for (const CLI::App* const command : group->get_subcommands({})) {
    result.push_back({command->get_name(), command->get_description()});
  }
  return result;
}

bool isPlain(const std::string& word) {
  return !word.empty() && !word.starts_with('-') && oneLine(word) == word;
}

// The shortest word for a preset that needs no escaping, or another one if its beginning is typed.
// Empty when no word continues what is typed.
std::string presetWord(const std::vector<TuningPreset>& presets, const TuningPreset& preset,
                       const std::string& typed) {
  constexpr std::string_view shortestBeginning = "mine:";
  std::vector<std::string> words = wordsNaming(presets, preset);
  std::erase_if(words, [](const std::string& word) { return !isPlain(word); });
  if (typed.size() < shortestBeginning.size()) words.resize(std::min<std::size_t>(words.size(), 1));
  const auto found = std::find_if(words.begin(), words.end(), [&](const std::string& word) {
    return startsWithIgnoringCase(word, typed);
  });
  return found == words.end() ? "" : *found;
}

std::vector<TuningPreset> allPresets(const CompletionPlace& place, const World& world) {
  World chosen = world;
  if (place.simulates) chosen.presets = world.simulatedPresets;
  return PresetLibrary(chosen).all();
}

// Whether the command takes the user's own presets only.
bool isForOwn(const CLI::App& command) {
  const std::string& name = command.get_name();
  return name == "delete" || name == "edit" || name == "move";
}

Candidates presets(const CompletionPlace& place, const World& world) {
  const std::vector<TuningPreset> all = allPresets(place, world);
  const bool mayBeBuiltIn = !isForOwn(*place.command);
  Candidates result;
  for (const TuningPreset& preset : all) {
    if (preset.isBuiltIn && !mayBeBuiltIn) continue;
    const std::string word = presetWord(all, preset, place.typed);
    if (!word.empty()) result.push_back({word, word == preset.name ? preset.game : preset.name});
  }
  return result;
}

// The games of the presets, each once.
Candidates games(const CompletionPlace& place, const World& world) {
  Candidates result;
  for (const TuningPreset& preset : allPresets(place, world)) {
    const CompletionCandidate game{preset.game, ""};
    if (!isPlain(game.word) || std::count(result.begin(), result.end(), game) > 0) continue;
    result.push_back(game);
  }
  return result;
}

// The menus before the last writes to the first attached base. A history that cannot be read has
// none.
Candidates formerMenus(const World& world) {
  constexpr std::size_t mostOffered = 20;
  const GlobalOptions any;
  const auto bases = namedBases({world, any});
  if (bases.empty()) return {};
  Candidates result;
  try {
    const auto records = world.history.read(bases.front()).records;
    for (auto record = records.rbegin(); record != records.rend() && result.size() < mostOffered;
         ++record) {
      if (!record->menu) continue;
      result.push_back({std::string(historySidePrefix) + shortID(record->id),
                        fmt::format("Before {}", localTimeText(record->time))});
    }
  } catch (const FileError&) {
    return {};
  }
  return result;
}

// The sides of a comparison that have a name; any file is one, too. Former menus are offered once
// their prefix has begun.
Candidates sides(const CompletionPlace& place, const World& world) {
  const std::string& typed = place.typed;
  if (!typed.empty() && (typed.starts_with(historySidePrefix) ||
                         std::string_view(historySidePrefix).starts_with(typed))) {
    return formerMenus(world);
  }
  Candidates result{{"base", "The active set"}};
  CompletionPlace preset = place;
  const bool isPreset = place.typed.starts_with(presetSidePrefix);
  preset.typed = isPreset ? place.typed.substr(presetSidePrefix.size()) : "";
  for (const CompletionCandidate& named : presets(preset, world)) {
    result.push_back({std::string(presetSidePrefix) + named.word, named.description});
  }
  return result;
}

}  // namespace

CompletionChoice completionValues(const CompletionPlace& place, const World& world) {
  const std::string type = place.value->get_type_name();
  if (type == "FILE") return {{}, true};
  if (type == "SIDE") return {sides(place, world), true};
  if (type == "SET") return {sets()};
  if (type == "CODE") return {settings()};
  if (type == "CODE=VALUE") return {assignments(place)};
  if (type == "[=PRODUCT]") return {products()};
  if (type == "COMMAND") return {commandsBelow(*place.command->get_parent(), place.positional)};
  if (type == "GAME") return {games(place, world)};
  if (type == "WHICH") {
    return {place.value->check_name("--device") ? devices(world) : presets(place, world)};
  }
  if (type.find('|') != std::string::npos) return {alternatives(type)};
  return {};
}

}  // namespace quorvane
