#pragma once

#include <vector>

#include "cli/assignments.h"
#include "cli/context.h"
#include "cli/json_output.h"
#include "history/history.h"
#include "session/wheel_base.h"

namespace quorvane {

// Values to write to a base, and what for.
struct WriteRequest {
  std::vector<Assignment> values;  // in their order
  HistoryIntent intent;            // without the wanted values
  Json document = Json::object();  // printed with --json; gets the member "results"
};

// Writes the values, each verified by a read-back. `menu` is the base's menu, as just read. Prints
// a receipt after each value, or with --json one document at the end. A change is relative to the
// value that was read last. A failure does not stop the rest; an interruption does, after the
// current value. Records the values in the history; if that fails, a message says so.
ExitStatus writeValues(const CommandContext& context, const Interruption& interruption,
                       WheelBase& base, const TuningSnapshot& menu, WriteRequest request);

}  // namespace quorvane
