#pragma once

#include <string>
#include <vector>

#include "history/history_record.h"

namespace quorvane {

// The first characters of a record's id, by which people name it.
std::string shortID(const UUID& id);

// What a batch did, in one line: "FF 65 % -> 80 %, SEN 900 deg -> AUT", "set 3".
std::string changeText(const HistoryRecord& record);

// A line for each record, the latest first.
std::string historyText(const std::vector<HistoryRecord>& records);

}  // namespace quorvane
