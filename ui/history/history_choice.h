#pragma once

#include <QString>
#include <optional>

#include "app/staging.h"
#include "history/history_record.h"
#include "presets/tuning_preset.h"

namespace quorvane {

// What going back to before a record means: "Back to before 14:02", with the day if it is not
// today, and with the set if the menu is in another one.
QString historyChoice(const HistoryRecord& record, const std::optional<TuningSnapshot>& menu);

// The menu before the record, as values to load. Precondition: the record has one.
TuningPreset presetBefore(const HistoryRecord& record,
                          const std::optional<FanatecProduct>& product);

// The edits of a menu that lead back to the one before the record. Precondition: the record has
// one.
StagedValues editsBackTo(const HistoryRecord& record, const std::optional<TuningSnapshot>& menu,
                         const std::optional<FanatecProduct>& product);

}  // namespace quorvane
