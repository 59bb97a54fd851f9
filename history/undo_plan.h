#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "history/history_record.h"

namespace quorvane {

enum class UndoDirection { undo, redo };

// The record that an undo, or a redo, is about next: undoing again goes further back, a new write
// ends what can be redone. An undo that failed is not counted. Only records that changed values
// (saves, applied presets, `set`) can be undone. None when there is none.
std::optional<HistoryRecord> nextToReverse(const std::vector<HistoryRecord>& records,
                                           UndoDirection direction);

// A value that was changed after the write, and so is left alone.
struct ValueLeftAlone {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t present = 0;
  std::int64_t written = 0;  // what the base would have to have

  bool operator==(const ValueLeftAlone&) const = default;
};

// What undoing or redoing a record writes to a base. Values are in display units.
struct UndoPlan {
  std::vector<ParameterValue> writes;
  std::vector<ValueLeftAlone> leftAlone;

  bool operator==(const UndoPlan&) const = default;
};

// Whether the menu is of the record's set and mode. Otherwise it must not be undone.
bool isOfSameSet(const HistoryRecord& record, const TuningSnapshot& menu);

// Compares the base's present menu with what the record wrote. Values that have the target already
// are in neither list. Precondition: isOfSameSet().
UndoPlan undoPlan(const HistoryRecord& record, UndoDirection direction, const TuningSnapshot& menu);

}  // namespace quorvane
