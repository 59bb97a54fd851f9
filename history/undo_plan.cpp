#include "history/undo_plan.h"

#include <algorithm>
#include <utility>

#include "presets/setting_value.h"
#include "session/menu_place.h"

namespace quorvane {
namespace {

using Product = std::optional<FanatecProduct>;

// A value that a record changed.
struct ValueChange {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t before = 0;
  std::int64_t after = 0;
};

bool writesValues(HistoryAction action) {
  return action == HistoryAction::save || action == HistoryAction::apply ||
         action == HistoryAction::set;
}

bool isUnchanged(TuningParameter parameter, std::int64_t a, std::int64_t b,
                 const Product& product) {
  return a == b || isSameValue(parameter, a, b, product);
}

// Whether nothing can have been sent: the value is invalid, and no other one was read back.
bool wasRefused(const ValueReceipt& receipt, const Product& product) {
  return !receipt.readBack && !encodedValue({receipt.parameter, receipt.wanted}, product);
}

std::int64_t valueIn(const TuningSnapshot& menu, TuningParameter parameter,
                     const Product& product) {
  return parameter.written(menu.value(parameter, product), product);
}

// Of a batch that was cut short, every value may have been written.
std::vector<ValueReceipt> receiptsOf(const HistoryRecord& record) {
  if (record.outcome) return record.outcome->values;
  std::vector<ValueReceipt> receipts;
  receipts.reserve(record.wanted.size());
  for (const auto& [parameter, value] : record.wanted) {
    receipts.push_back({parameter, {}, value, {}, 0, {}});
  }
  return receipts;
}

std::vector<ValueChange> changesOf(const HistoryRecord& record) {
  const Product product = record.product();
  std::vector<ValueChange> changes;
  for (const ValueReceipt& receipt : receiptsOf(record)) {
    const TuningParameter parameter = receipt.parameter;
    if (parameter == TuningParameter::slot || wasRefused(receipt, product)) continue;
    if (!receipt.was && !record.menu) continue;
    const std::int64_t before =
        receipt.was ? *receipt.was : valueIn(*record.menu, parameter, product);
    const std::int64_t after = receipt.readBack.value_or(receipt.wanted);
    if (!isUnchanged(parameter, before, after, product)) {
      changes.push_back({parameter, before, after});
    }
  }
  return changes;
}

bool isReversible(const HistoryRecord& record) {
  return writesValues(record.action) && record.menu && !changesOf(record).empty();
}

bool hasSucceeded(const HistoryRecord& record) {
  return record.outcome && !record.outcome->error &&
         std::none_of(record.outcome->values.begin(), record.outcome->values.end(),
                      [](const ValueReceipt& receipt) { return receipt.error.has_value(); });
}

// The records that can be undone and redone, the next one last.
struct Reversible {
  std::vector<HistoryRecord> done;
  std::vector<HistoryRecord> undone;
};

// Moves the record with this id.
void move(const UUID& id, std::vector<HistoryRecord>& from, std::vector<HistoryRecord>& to) {
  const auto found = std::find_if(from.begin(), from.end(),
                                  [&](const HistoryRecord& record) { return record.id == id; });
  if (found == from.end()) return;
  to.push_back(std::move(*found));
  from.erase(found);
}

void take(const HistoryRecord& record, Reversible& all) {
  if (isReversible(record)) {
    all.done.push_back(record);
    all.undone.clear();
  } else if (record.reverses && hasSucceeded(record)) {
    if (record.action == HistoryAction::undo) move(*record.reverses, all.done, all.undone);
    if (record.action == HistoryAction::redo) move(*record.reverses, all.undone, all.done);
  }
}

}  // namespace

std::optional<HistoryRecord> nextToReverse(const std::vector<HistoryRecord>& records,
                                           UndoDirection direction) {
  Reversible all;
  for (const HistoryRecord& record : records) take(record, all);
  const auto& candidates = direction == UndoDirection::undo ? all.done : all.undone;
  return candidates.empty() ? std::nullopt : std::optional(candidates.back());
}

bool isOfSameSet(const HistoryRecord& record, const TuningSnapshot& menu) {
  if (!record.menu || record.menu->slot() != menu.slot()) return false;
  if (MenuPlace(menu) == MenuPlace(*record.menu)) return true;
  // A write can flip the mode bit in the reply without changing the set.
  const auto& after = record.outcome ? record.outcome->menu : std::nullopt;
  return after && MenuPlace(menu) == MenuPlace(*after);
}

UndoPlan undoPlan(const HistoryRecord& record, UndoDirection direction,
                  const TuningSnapshot& menu) {
  const Product product = record.product();
  UndoPlan plan;
  for (const auto& [parameter, before, after] : changesOf(record)) {
    const bool isUndo = direction == UndoDirection::undo;
    const std::int64_t target = isUndo ? before : after;
    const std::int64_t expected = isUndo ? after : before;
    const std::int64_t present = valueIn(menu, parameter, product);
    if (isUnchanged(parameter, present, target, product)) continue;
    if (isUnchanged(parameter, present, expected, product)) {
      plan.writes.push_back({parameter, target});
    } else {
      plan.leftAlone.push_back({parameter, present, expected});
    }
  }
  return plan;
}

}  // namespace quorvane
