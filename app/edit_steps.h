#pragma once

#include <optional>
#include <vector>

#include "app/staging.h"

namespace quorvane {

// The staged edits before each of the latest edits, so that these can be taken back one by one.
// Edits of one value in a row, such as a slider that is dragged, are one step.
class EditSteps {
 public:
  // Notes what was staged before an edit; `parameter` is none for an edit of several values.
  void note(const StagedValues& before, std::optional<TuningParameter> parameter);

  // What was staged before the last step, which is removed. None without one.
  std::optional<StagedValues> take();

  void clear();

 private:
  std::vector<StagedValues> before_;
  std::optional<TuningParameter> edited_;  // in the last step
};

}  // namespace quorvane
