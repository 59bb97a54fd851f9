#include "presets/comparison_text.h"

#include <fmt/format.h>

#include "support/invariant.h"

namespace quorvane {

std::string_view comparedStateText(ComparedState state, const OneSidedWords& words) {
  switch (state) {
    case ComparedState::same:
      return "same";
    case ComparedState::differs:
      return "differs";
    case ComparedState::onlyLeft:
      return words.onlyLeft;
    case ComparedState::onlyRight:
      return words.onlyRight;
    case ComparedState::outOfRange:
      return "out of range";
    case ComparedState::notOnBase:
      return "not on this base";
  }
  invariantFailed("a compared row has no state");
}

std::vector<std::string> comparedCountTexts(const SettingsComparison& comparison,
                                            const OneSidedWords& words) {
  const std::size_t differing = comparison.count(ComparedState::differs);
  const std::size_t equal = comparison.count(ComparedState::same);
  std::vector<std::string> texts{
      fmt::format("{} {}", differing, differing == 1 ? "differs" : "differ"),
      fmt::format("{} {} the same", equal, equal == 1 ? "is" : "are")};
  for (const ComparedState state : {ComparedState::onlyLeft, ComparedState::onlyRight,
                                    ComparedState::outOfRange, ComparedState::notOnBase}) {
    if (comparison.count(state) == 0) continue;
    texts.push_back(fmt::format("{} {}", comparison.count(state), comparedStateText(state, words)));
  }
  return texts;
}

}  // namespace quorvane
