#include "cli/not_understood.h"

#include "support/printing.h"
#include "support/text.h"

namespace quorvane {

void printNotUnderstood(const World& world, const std::vector<std::string>& pieces) {
  for (const std::string& piece : pieces) {
    printTo(world.err, "Not understood: {}\n", oneLine(piece));
  }
}

}  // namespace quorvane
