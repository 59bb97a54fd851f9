#pragma once

#include <string_view>

#include "cli/context.h"
#include "history/history.h"
#include "session/wheel_base.h"

namespace quorvane {

// Says on standard error that a batch is not in the history, if it is not.
void printIfNotRecorded(const World& world, const HistoryBatch& batch);

// Says on standard error that something is not in the history, and why.
void printNotRecorded(const World& world, std::string_view reason);

// Runs an operation that changes the base as one batch of the history, and returns its result.
template <typename Operation>
auto recorded(const CommandContext& context, const WheelBase& base, const HistoryIntent& intent,
              const Operation& operation) {
  return context.world.history.during(base, intent, operation, [&](const HistoryBatch& batch) {
    printIfNotRecorded(context.world, batch);
  });
}

}  // namespace quorvane
