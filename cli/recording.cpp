#include "cli/recording.h"

#include "support/printing.h"
#include "support/text.h"

namespace quorvane {

void printIfNotRecorded(const World& world, const HistoryBatch& batch) {
  if (batch.failure()) printNotRecorded(world, *batch.failure());
}

void printNotRecorded(const World& world, std::string_view reason) {
  printTo(world.err, "Not in the history: {}\n", oneLine(reason));
}

}  // namespace quorvane
