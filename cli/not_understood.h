#pragma once

#include <string>
#include <vector>

#include "cli/context.h"

namespace quorvane {

// Lists the parts of a text that settingsInText() did not understand on standard error. Prints
// nothing for none.
void printNotUnderstood(const World& world, const std::vector<std::string>& pieces);

}  // namespace quorvane
