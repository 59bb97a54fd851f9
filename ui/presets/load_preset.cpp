#include "ui/presets/load_preset.h"

#include <string>

#include "ui/model/section.h"

namespace quorvane {

void loadPreset(AppModel& model, const TuningPreset& preset) {
  model.stagePreset(preset);
  model.setRequestedSection(std::string(rawValue(Section::tuning)));
}

}  // namespace quorvane
