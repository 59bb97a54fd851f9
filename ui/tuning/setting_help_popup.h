#pragma once

#include "app/app_model.h"
#include "ui/kit/dialog.h"

namespace quorvane {

// What one setting does, over a window that has no room for the panel.
class SettingHelpPopup final : public Dialog {
  Q_OBJECT

 public:
  SettingHelpPopup(AppModel& model, TuningParameter parameter, QWidget* parent);
};

}  // namespace quorvane
