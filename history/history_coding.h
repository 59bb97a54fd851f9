#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "history/history_record.h"

namespace quorvane {

// The lines of a history file: a JSON object for each record, and another one for its outcome. Both
// end with a line feed.
std::string recordLine(const HistoryRecord& record);
std::string outcomeLine(const UUID& record, const HistoryOutcome& outcome);

// What a history file holds.
struct HistoryContents {
  std::vector<HistoryRecord> records;  // the oldest first
  std::size_t unreadableLines = 0;     // skipped, such as the torn last line after a crash

  bool operator==(const HistoryContents&) const = default;
};

// Decodes a file. Skips the outcomes of records that are not in it.
HistoryContents decodeHistory(std::string_view content);

}  // namespace quorvane
