#pragma once

#include <optional>
#include <vector>

#include "history/history_record.h"
#include "session/menu_place.h"

namespace quorvane {

// Values of a set that differ from what the last record of this set left there.
struct NotAsLeft {
  HistoryRecord record;  // that left them; has the menu afterwards
  MenuPlace place;
  std::vector<ParameterValue> left;  // as they were, in menu order; never empty

  bool operator==(const NotAsLeft&) const = default;
};

// Compares a menu with the last record that wrote values, or reset them, in its set and mode. None
// when all values are the same, when there is no such record, and when it was cut short.
std::optional<NotAsLeft> notAsLeft(const std::vector<HistoryRecord>& records,
                                   const TuningSnapshot& menu);

// Those of the values that still differ from the menu. None in another set or mode.
std::vector<ParameterValue> stillNotAsLeft(const NotAsLeft& notAsLeft, const TuningSnapshot& menu,
                                           const std::optional<FanatecProduct>& product);

}  // namespace quorvane
