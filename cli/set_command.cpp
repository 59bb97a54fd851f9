#include "cli/assignments.h"
#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/value_writer.h"
#include "cli/write_plan.h"

namespace quorvane {

ExitStatus setCommand(const CommandContext& context, const std::vector<std::string>& words,
                      bool isDryRun) {
  const std::vector<Assignment> values = parseAssignments(words);
  if (isDryRun) {
    const OpenBase base(context);
    return printWritePlan(context, *base, values);
  }
  const Interruption interruption = context.world.interruption();
  const OpenBase base(context, OpenBase::Use::writing);
  const TuningSnapshot menu = base->fetchTuning(WheelBase::readTimeout);
  return writeValues(context, interruption, *base, menu, {values, {HistoryAction::set}});
}

}  // namespace quorvane
