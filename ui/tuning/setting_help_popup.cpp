#include "ui/tuning/setting_help_popup.h"

#include <QVBoxLayout>

#include "ui/kit/button.h"
#include "ui/kit/text.h"
#include "ui/tuning/setting_help_panel.h"

namespace quorvane {
namespace {

constexpr int popupHeight = 380;  // of the panel in it

}  // namespace

SettingHelpPopup::SettingHelpPopup(AppModel& model, TuningParameter parameter, QWidget* parent)
    : Dialog(QStringLiteral("What it does"), parent) {
  setObjectName(QStringLiteral("settingHelpPopup"));
  auto* const panel = new SettingHelpPanel(model);
  panel->explain(parameter);
  panel->setScrollableByKeys(true);
  panel->setMinimumHeight(popupHeight);
  content().addWidget(panel);
  auto* const close = new Button(QStringLiteral("Close"));
  close->setObjectName(QStringLiteral("closeHelpButton"));
  close->setDefault(true);
  addButton(close, false);
  close->setFocus();
}

}  // namespace quorvane
