#include <fmt/format.h>

#include "history/history_file.h"
#include "tests/faults/model/action_lists.h"
#include "tests/faults/model/action_texts.h"
#include "tests/history/history_samples.h"

namespace quorvane {
namespace {

constexpr std::int64_t present = 65;  // the base's force feedback
constexpr std::int64_t target = 80;

// Puts the records into the history of the base, as if they had been written to its present set.
void remember(World& world, std::vector<HistoryRecord> records) {
  if (!world.model().tuning()) return;
  const HistoryFile file(world.state_.path() / historyFileName(world.info(0)));
  for (HistoryRecord& record : records) {
    record.menu = world.model().tuning();
    file.append(record);
    file.append(record.id, record.outcome.value());
  }
}

Action reversing(const std::string& name, const std::string& title, void (AppModel::*reverse)(),
                 const std::string& success) {
  Action action;
  action.name = name;
  action.run = [reverse](World& world) { (world.model().*reverse)(); };
  action.dialogue = {{{menuPacket, menuAnswer}, {}, {}, true},
                     meantWrite("FF", std::to_string(present))};
  action.lines = [title, success](const Action::Errors& errors) {
    if (errors[0]) return Lines{fmt::format("[error] {} failed: {}", title, *errors[0])};
    if (!errors[1]) return Lines{success};
    return Lines{fmt::format("[error] {} failed: the base rejected FF: {}", title, *errors[1])};
  };
  action.withoutBase = notConnectedLine;
  action.inOtherSet = {fmt::format(
      "[error] {} failed: the write was to set 2 of the standard menu; choose that first", title)};
  return action;
}

}  // namespace

std::vector<Action> reversingActions() {
  Action undo =
      reversing("undo", "Undo", &AppModel::undo, "[log] Undid 1 change in set C (Custom)");
  undo.prepare = [](World& world) { remember(world, {sampleRecord(target, present)}); };
  Action redo =
      reversing("redo", "Redo", &AppModel::redo, "[log] Redid 1 change in set C (Custom)");
  redo.prepare = [](World& world) {
    const HistoryRecord undone = sampleRecord(present, target);
    remember(world, {undone, sampleReversal(HistoryAction::undo, undone)});
  };
  return {undo, redo};
}

}  // namespace quorvane
