#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "presets/settings_comparison.h"

namespace quorvane {

// The words for settings that only one side has a value for.
struct OneSidedWords {
  std::string_view onlyLeft = "only left";
  std::string_view onlyRight = "only right";
};

// "same", "differs", "only left", "only right", "out of range", "not on this base".
std::string_view comparedStateText(ComparedState state, const OneSidedWords& words = {});

// How many rows are in each state: "5 differ", "6 are the same", "5 only left". The first two
// always, the others if there are any.
std::vector<std::string> comparedCountTexts(const SettingsComparison& comparison,
                                            const OneSidedWords& words = {});

}  // namespace quorvane
