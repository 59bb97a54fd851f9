#pragma once

#include "cli/json_output.h"
#include "history/history_record.h"
#include "history/undo_plan.h"

namespace quorvane {

// {"id", "time", "program", "action", "detail", "reverses", "set", "mode", "menu", "wanted",
// "outcome"}; what is not known is null.
Json recordJson(const HistoryRecord& record);

// [{"parameter", "value"}]
Json writesJson(const UndoPlan& plan);

// [{"parameter", "present", "written"}]
Json leftAloneJson(const UndoPlan& plan);

}  // namespace quorvane
