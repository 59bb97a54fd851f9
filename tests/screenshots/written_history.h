#pragma once

#include <cstdint>
#include <vector>

#include "history/history_record.h"

namespace quorvane {

// What was written to a base of this product today, yesterday and a week ago, the oldest first.
std::vector<HistoryRecord> writtenHistory(std::int64_t productID);

}  // namespace quorvane
