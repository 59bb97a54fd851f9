#include <fmt/format.h>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "protocol/error.h"
#include "support/printing.h"

namespace quorvane {
namespace {

// The menu after a command: as a document, or as the line that says what happened.
void report(const CommandContext& context, const WheelBase& base, const TuningSnapshot& snapshot,
            const std::string& line) {
  if (context.options.json) {
    printJson(context.world, {{"device", deviceJson(base.info())},
                              {"tuning", tuningJson(snapshot, base.product())}});
  } else {
    printTo(context.world.out, "{}\n", line);
  }
}

}  // namespace

ExitStatus selectCommand(const CommandContext& context, std::int64_t set) {
  TuningParameter(TuningParameter::slot).encode(set, std::nullopt);
  const OpenBase base(context);
  const TuningSnapshot snapshot =
      base->selectSlot(set, context.options.layout.value_or(TuningLayout::inPlace));
  if (snapshot.slot() != set) {
    throw FanatecError::writeIgnored(TuningParameter::slot, snapshot.slot());
  }
  report(context, *base, snapshot, fmt::format("Switched to set {}", snapshot.slot()));
  return ExitStatus::done;
}

ExitStatus modeCommand(const CommandContext& context, const std::optional<std::string>& mode) {
  const OpenBase base(context);
  TuningSnapshot snapshot = base->fetchTuning(WheelBase::readTimeout);
  if (!mode) {
    report(context, *base, snapshot, std::string(snapshot.modeName()));
    return ExitStatus::done;
  }
  if (snapshot.modeName() != *mode) snapshot = base->switchMenuMode();
  if (snapshot.modeName() != *mode) {
    throw FanatecError::invalidReport(
        fmt::format("the base still reports the {} menu", snapshot.modeName()));
  }
  report(context, *base, snapshot, fmt::format("Now in {} mode", *mode));
  return ExitStatus::done;
}

ExitStatus factoryResetCommand(const CommandContext& context, bool yes) {
  if (!yes) {
    throw UsageError(
        "This sets every set back to defaults and cannot be undone. Note the values you care about "
        "first (quorvanectl read); then run it again with --yes");
  }
  const OpenBase base(context);
  const TuningSnapshot snapshot = base->factoryReset();
  report(context, *base, snapshot, "Tuning menu reset to factory defaults");
  return ExitStatus::done;
}

}  // namespace quorvane
