#include <fmt/format.h>

#include <algorithm>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "cli/recording.h"
#include "cli/suggestion.h"
#include "protocol/error.h"
#include "protocol/setting.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// Prints the result of a command: with --json the menu, else the line.
void report(const CommandContext& context, const WheelBase& base, const TuningSnapshot& snapshot,
            const std::string& line) {
  if (context.options.json) {
    printJson(context.world, {{"device", deviceJson(base.info())},
                              {"tuning", tuningJson(snapshot, base.product())}});
  } else {
    printTo(context.world.out, "{}\n", line);
  }
}

// A set from the command line.
struct NamedSet {
  std::int64_t number = 0;
  bool isName = false;  // given as "A" or "C"; standard menu only
};

NamedSet parseSet(const std::string& word) {
  const std::string name = lowerCase(word.substr(0, word.find(" (")));
  if (name == "a") return {autoSet, true};
  if (name == "c") return {customSet, true};
  const auto number = parseInteger(word);
  if (!number) {
    throw UsageError(fmt::format(
        "There is no set \"{}\": give 1 to 5, or A or C of the standard menu", oneLine(word)));
  }
  if (!tuningSets.contains(*number)) {
    throw CommandError("outOfRange", fmt::format("Set {}: there are sets {} to {}", *number,
                                                 tuningSets.lower, tuningSets.upper));
  }
  return {*number, false};
}

// The menu if the named set is already active, else none. Throws UsageError in the advanced menu,
// whose sets have no names.
std::optional<TuningSnapshot> menuOfName(WheelBase& base, std::int64_t number) {
  TuningSnapshot menu = base.fetchTuning(WheelBase::readTimeout);
  if (menu.isAdvancedMode()) {
    throw UsageError(
        "The sets of the advanced menu are called 1 to 5; A and C are those of the standard menu");
  }
  const bool isThere = number == autoSet ? menu.slot() == autoSet : menu.slot() != autoSet;
  if (isThere) return menu;
  return std::nullopt;
}

TuningSnapshot switchTo(const CommandContext& context, WheelBase& base, std::int64_t set) {
  const auto layout = context.options.layout.value_or(TuningLayout::inPlace);
  TuningSnapshot menu = recorded(context, base, {HistoryAction::select, {}, std::to_string(set)},
                                 [&] { return base.selectSlot(set, layout); });
  if (menu.slot() == set) return menu;
  throw CommandError(
      "writeIgnored",
      fmt::format("The base did not switch to set {}; it is in set {}", set, menu.slot()));
}

std::string parseMode(const std::string& word) {
  const std::vector<std::string> modes{"standard", "advanced"};
  std::string mode = lowerCase(word);
  if (std::find(modes.begin(), modes.end(), mode) != modes.end()) return mode;
  const auto near = nearestWord(word, modes);
  throw UsageError(fmt::format("There is no mode \"{}\": give standard or advanced", oneLine(word)),
                   near ? std::vector<std::string>{*near} : std::vector<std::string>());
}

}  // namespace

ExitStatus selectCommand(const CommandContext& context, const std::string& word) {
  const NamedSet set = parseSet(word);
  const OpenBase base(context);
  if (set.isName) {
    if (const auto menu = menuOfName(*base, set.number)) {
      report(context, *base, *menu, fmt::format("Already in set {}", menu->setName()));
      return ExitStatus::done;
    }
  }
  const TuningSnapshot menu = switchTo(context, *base, set.number);
  report(context, *base, menu, fmt::format("Switched to set {}", menu.slot()));
  return ExitStatus::done;
}

ExitStatus modeCommand(const CommandContext& context, const std::string& word) {
  const std::string mode = word.empty() ? word : parseMode(word);
  const OpenBase base(context);
  TuningSnapshot snapshot = base->fetchTuning(WheelBase::readTimeout);
  if (mode.empty()) {
    report(context, *base, snapshot, std::string(snapshot.modeName()));
    return ExitStatus::done;
  }
  if (snapshot.modeName() != mode) {
    snapshot = recorded(context, *base, {HistoryAction::mode, {}, mode},
                        [&] { return base->switchMenuMode(); });
  }
  if (snapshot.modeName() != mode) {
    throw FanatecError::invalidReport(
        fmt::format("the base still reports the {} menu", snapshot.modeName()));
  }
  report(context, *base, snapshot, fmt::format("Now in {} mode", mode));
  return ExitStatus::done;
}

ExitStatus factoryResetCommand(const CommandContext& context, bool yes) {
  if (!yes) {
    throw UsageError(
        "This sets every set back to defaults and cannot be undone. Note the values you care about "
        "first (quorvanectl read); then run it again with --yes");
  }
  const OpenBase base(context);
  const TuningSnapshot snapshot =
      recorded(context, *base, {HistoryAction::factoryReset}, [&] { return base->factoryReset(); });
  report(context, *base, snapshot, "Tuning menu reset to factory defaults");
  return ExitStatus::done;
}

}  // namespace quorvane
