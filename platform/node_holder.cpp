#include "platform/node_holder.h"

#include <fmt/format.h>

namespace quorvane {

std::string nameOf(const NodeHolder& holder) {
  if (holder.program.empty()) return fmt::format("process {}", holder.process);
  return fmt::format("{} (process {})", holder.program, holder.process);
}

}  // namespace quorvane
