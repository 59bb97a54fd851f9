#include "ui/presets/load_preset.h"

#include <string>

#include "ui/model/availability.h"
#include "ui/model/section.h"

namespace quorvane {

QString whyNotLoad(const AppModel& model) {
  if (model.isConnected() && !model.busy() && !model.tuning()) {
    return QStringLiteral("The base has not told its menu yet");
  }
  return whyNotNow(model);
}

void loadPreset(AppModel& model, const TuningPreset& preset) {
  model.stagePreset(preset);
  model.setRequestedSection(std::string(rawValue(Section::tuning)));
}

}  // namespace quorvane
