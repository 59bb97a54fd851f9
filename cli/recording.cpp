#include "cli/recording.h"

#include "support/printing.h"
#include "support/text.h"

namespace quorvane {

void printIfNotRecorded(const World& world, const HistoryBatch& batch) {
  if (!batch.failure()) return;
  printTo(world.err, "Not in the history: {}\n", oneLine(*batch.failure()));
}

}  // namespace quorvane
