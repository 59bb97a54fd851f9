#include "app/outcome.h"

#include <algorithm>

namespace quorvane {

std::size_t count(const Outcomes& outcomes, Outcome outcome) {
  return static_cast<std::size_t>(
      std::ranges::count_if(outcomes, [&](const auto& each) { return each.second == outcome; }));
}

void eraseTaken(Outcomes& outcomes) {
  std::erase_if(outcomes, [](const auto& each) { return each.second == Outcome::taken; });
}

void eraseUnsaved(Outcomes& outcomes, TuningParameter parameter) {
  const auto found = outcomes.find(parameter);
  if (found != outcomes.end() && found->second != Outcome::taken) outcomes.erase(found);
}

}  // namespace quorvane
