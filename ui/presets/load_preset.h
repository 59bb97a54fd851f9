#pragma once

#include "app/app_model.h"

namespace quorvane {

// Fills the preset's values in as unsaved changes, and shows the section "Tuning".
void loadPreset(AppModel& model, const TuningPreset& preset);

}  // namespace quorvane
