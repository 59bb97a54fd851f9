#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "presets/tuning_preset.h"
#include "protocol/product.h"
#include "protocol/tuning_snapshot.h"
#include "session/value_receipt.h"
#include "support/wall_time.h"

namespace quorvane {

// What a batch of writes was for; `wheel` are changes that the user made with the base's own
// buttons while a program followed it.
enum class HistoryAction {
  save,
  apply,
  set,
  select,
  mode,
  factoryReset,
  rotation,
  raw,
  undo,
  redo,
  wheel
};

// The word in files: "save", "factory reset".
std::string_view rawValue(HistoryAction action);

// The exact inverse of rawValue(); none for any other text.
std::optional<HistoryAction> historyAction(std::string_view rawValue);

// What became of a batch.
struct HistoryOutcome {
  std::vector<ValueReceipt> values;    // of the values that were tried, in their order
  std::optional<std::string> error;    // that ended the batch, if one did
  std::optional<TuningSnapshot> menu;  // the last one that the program had afterwards

  bool operator==(const HistoryOutcome&) const = default;
};

// One batch of writes to one base. A value type.
struct HistoryRecord {
  UUID id;
  WallSeconds time{};
  std::string program;  // that wrote: "quorvane", "quorvanectl"
  std::string base;     // its display name
  std::int64_t productID = 0;
  HistoryAction action = HistoryAction::set;
  std::string detail;                     // the preset's name, the set's number, the packet, ...
  std::optional<UUID> reverses;           // of an undo or a redo: the record that it is about
  std::optional<TuningSnapshot> menu;     // before the batch; none when the program had read none
  std::vector<ParameterValue> wanted;     // the values to write
  std::optional<HistoryOutcome> outcome;  // none for a batch that was cut short

  std::optional<FanatecProduct> product() const { return FanatecProduct::lookup(productID); }

  bool operator==(const HistoryRecord&) const = default;
};

}  // namespace quorvane
