#include "ui/tuning/auto_set_warning.h"

#include <QVBoxLayout>

#include "protocol/setting.h"
#include "ui/kit/warning_bar.h"

namespace quorvane {

AutoSetWarning::AutoSetWarning(AppModel& model, QWidget* parent) : Bar(model, parent) {
  auto* const box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  box->addWidget(new WarningBar(
      QStringLiteral("This is the A set, Fanatec's Auto Setup."),
      QStringLiteral("Games that support Auto Setup control these values, and the base reloads "
                     "factory defaults at boot. Changes you save here work until the next power "
                     "cycle. Use set C or an advanced set for values you want to keep.")));
}

bool AutoSetWarning::isWanted() const {
  const auto& menu = model().tuning();
  return menu && !menu->isAdvancedMode() && menu->slot() == autoSet;
}

}  // namespace quorvane
