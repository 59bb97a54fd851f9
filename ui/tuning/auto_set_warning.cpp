#include "ui/tuning/auto_set_warning.h"

#include <QVBoxLayout>

#include "protocol/setting.h"
#include "ui/kit/metrics.h"
#include "ui/kit/warning_box.h"

namespace quorvane {

AutoSetWarning::AutoSetWarning(AppModel& model, QWidget* parent) : Bar(model, parent) {
  constexpr int inset = Metrics::pageInset;
  auto* const box = new QVBoxLayout(this);
  box->setContentsMargins(inset, inset / 2 + 2, inset, inset / 2 + 2);
  box->addWidget(new WarningBox(
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
