#pragma once

#include <vector>

#include "ui/compare/compare_side.h"

namespace quorvane {

class AppModel;

// The settings on the clipboard: of a text, or the presets of a settings file's content. Empty
// without a text; a text without a setting is an error in the log. Main thread only.
std::vector<CompareSide> pastedSides(AppModel& model);

}  // namespace quorvane
