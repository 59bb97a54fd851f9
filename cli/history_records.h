#pragma once

#include <string>

#include "cli/context.h"
#include "hid/device_info.h"
#include "history/history.h"

namespace quorvane {

// The base's history. Says on standard error how many lines cannot be read, if any. Throws
// FileError.
HistoryContents historyOf(const CommandContext& context, const HIDDeviceInfo& base);

// The record whose ID is, or begins with, `id` in either case, as `history` prints it. Throws
// UsageError if none or more than one does.
HistoryRecord recordWithID(const HistoryContents& contents, const std::string& id);

}  // namespace quorvane
