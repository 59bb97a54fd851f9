#include "cli/history_records.h"

#include <fmt/format.h>

#include <vector>

#include "cli/history_text.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {

HistoryContents historyOf(const CommandContext& context, const HIDDeviceInfo& base) {
  HistoryContents contents = context.world.history.read(base);
  if (contents.unreadableLines > 0) {
    printTo(context.world.err, "Left out of the history: {} that cannot be read\n",
            counted(contents.unreadableLines, "line"));
  }
  return contents;
}

HistoryRecord recordWithID(const HistoryContents& contents, const std::string& id) {
  std::vector<const HistoryRecord*> found;
  for (const HistoryRecord& record : contents.records) {
    if (!id.empty() && startsWithIgnoringCase(record.id.text(), id)) found.push_back(&record);
  }
  if (found.empty()) {
    throw UsageError(fmt::format(
        "No write in the history of this base has the ID \"{}\" (see quorvanectl history)",
        oneLine(id)));
  }
  if (found.size() == 1) return *found.front();
  std::string message =
      fmt::format("{} writes in the history have an ID that begins with \"{}\". Name one of them:",
                  found.size(), oneLine(id));
  for (const HistoryRecord* const record : found) {
    message += fmt::format("\n  {}  {}", lowerCase(record->id.text()), localTimeText(record->time));
  }
  throw UsageError(message);
}

}  // namespace quorvane
