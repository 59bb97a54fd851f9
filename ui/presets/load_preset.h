#pragma once

#include <QString>

#include "app/app_model.h"

namespace quorvane {

// Why no preset can be loaded or applied now; empty if one can.
QString whyNotLoad(const AppModel& model);

// Fills the preset's values in as unsaved changes, and shows the section "Tuning".
void loadPreset(AppModel& model, const TuningPreset& preset);

}  // namespace quorvane
