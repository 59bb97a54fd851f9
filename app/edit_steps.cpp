#include "app/edit_steps.h"

#include <utility>

namespace quorvane {

void EditSteps::note(const StagedValues& before, std::optional<TuningParameter> parameter) {
  const bool continues = parameter && parameter == edited_ && !before_.empty();
  edited_ = parameter;
  if (!continues) before_.push_back(before);
}

std::optional<StagedValues> EditSteps::take() {
  edited_.reset();
  if (before_.empty()) return std::nullopt;
  StagedValues before = std::move(before_.back());
  before_.pop_back();
  return before;
}

void EditSteps::clear() {
  before_.clear();
  edited_.reset();
}

}  // namespace quorvane
