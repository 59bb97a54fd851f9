#include "ui/compare/pasted_sides.h"

#include <QClipboard>
#include <QGuiApplication>

#include "app/app_model.h"
#include "ui/kit/text.h"

namespace quorvane {

std::vector<CompareSide> pastedSides(AppModel& model) {
  const QString pasted = QGuiApplication::clipboard()->text();
  if (pasted.isEmpty()) return {};
  const auto settings = model.settingsIn(text(pasted));
  if (!settings) return {};
  std::vector<CompareSide> sides;
  sides.reserve(settings->presets.size());
  for (const TuningPreset& preset : settings->presets) {
    sides.push_back(CompareSide::ofPasted(preset, settings->notUnderstood));
  }
  return sides;
}

}  // namespace quorvane
