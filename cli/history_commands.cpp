#include <fmt/format.h>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/history_json.h"
#include "cli/history_records.h"
#include "cli/history_text.h"
#include "cli/value_writer.h"
#include "history/undo_plan.h"
#include "protocol/menu_text.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

std::string_view wordOf(UndoDirection direction) {
  return direction == UndoDirection::undo ? "undo" : "redo";
}

HistoryAction actionOf(UndoDirection direction) {
  return direction == UndoDirection::undo ? HistoryAction::undo : HistoryAction::redo;
}

// Throws CommandError when there is none.
HistoryRecord recordToReverse(const CommandContext& context, const HIDDeviceInfo& base,
                              UndoDirection direction) {
  const auto record = nextToReverse(historyOf(context, base).records, direction);
  if (record) return *record;
  throw CommandError("notAvailable", fmt::format("There is nothing to {} on {}", wordOf(direction),
                                                 oneLine(base.displayName())));
}

void requireSet(const HistoryRecord& record, const TuningSnapshot& menu, UndoDirection direction) {
  if (isOfSameSet(record, menu)) return;
  throw CommandError(
      "notAvailable",
      fmt::format("The write to {} is in set {} of the {} menu; the base is in set {} of the {} "
                  "menu. Choose the other one first",
                  wordOf(direction), record.menu->slot(), record.menu->modeName(), menu.slot(),
                  menu.modeName()));
}

std::string textOf(TuningParameter parameter, std::int64_t value, const HistoryRecord& record) {
  return MenuText::shortText(parameter, value, record.product());
}

void printPlanHead(const World& world, const HistoryRecord& record, const UndoPlan& plan,
                   UndoDirection direction) {
  printTo(world.out, "{} what {} wrote at {} ({})\n",
          direction == UndoDirection::undo ? "Undoing" : "Redoing", oneLine(record.program),
          localTimeText(record.time), rawValue(record.action));
  for (const auto& [parameter, present, written] : plan.leftAlone) {
    printTo(world.out, "{:<4} left at {}: changed since, it was {}\n", parameter.code(),
            textOf(parameter, present, record), textOf(parameter, written, record));
  }
  if (plan.writes.empty()) printTo(world.out, "There is nothing to write\n");
}

void printWrites(const World& world, const HistoryRecord& record, const UndoPlan& plan,
                 const TuningSnapshot& menu) {
  for (const auto& [parameter, value] : plan.writes) {
    printTo(world.out, "{:<4} {} -> {}\n", parameter.code(),
            textOf(parameter, menu.value(parameter, record.product()), record),
            textOf(parameter, value, record));
  }
}

Json planJson(const HistoryRecord& record, const UndoPlan& plan) {
  return {{"record", record.id.text()},
          {"writes", writesJson(plan)},
          {"leftAlone", leftAloneJson(plan)}};
}

ExitStatus reverse(const CommandContext& context, UndoDirection direction, bool isDryRun) {
  const Interruption interruption = context.world.interruption();
  const OpenBase base(context, OpenBase::Use::writing);
  const HistoryRecord record = recordToReverse(context, base->info(), direction);
  const TuningSnapshot menu = base->fetchTuning(WheelBase::readTimeout);
  requireSet(record, menu, direction);
  const UndoPlan plan = undoPlan(record, direction, menu);
  if (!context.options.json) printPlanHead(context.world, record, plan, direction);
  if (!isDryRun) {
    return writeValues(context, interruption, *base, menu,
                       {assignmentsOf(plan.writes),
                        {actionOf(direction), {}, {}, record.id},
                        planJson(record, plan)});
  }
  if (context.options.json) {
    printJson(context.world, planJson(record, plan));
  } else {
    printWrites(context.world, record, plan, menu);
  }
  return ExitStatus::done;
}

}  // namespace

ExitStatus historyCommand(const CommandContext& context) {
  const HIDDeviceInfo base = chosenBase(context);
  const HistoryContents contents = historyOf(context, base);
  if (context.options.json) {
    Json records = Json::array();
    for (const HistoryRecord& record : contents.records) records.push_back(recordJson(record));
    printJson(context.world, {{"device", deviceJson(base)},
                              {"unreadableLines", contents.unreadableLines},
                              {"records", std::move(records)}});
  } else if (contents.records.empty()) {
    printTo(context.world.out, "Nothing was written to {} yet\n", oneLine(base.displayName()));
  } else {
    printTo(context.world.out, "{}", historyText(contents.records));
  }
  return ExitStatus::done;
}

ExitStatus undoCommand(const CommandContext& context, bool isDryRun) {
  return reverse(context, UndoDirection::undo, isDryRun);
}

ExitStatus redoCommand(const CommandContext& context, bool isDryRun) {
  return reverse(context, UndoDirection::redo, isDryRun);
}

}  // namespace quorvane
