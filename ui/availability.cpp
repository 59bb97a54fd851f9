#include "ui/availability.h"

namespace quorvane {

QString whyNotNow(const AppModel& model) {
  if (!model.isConnected()) return QStringLiteral("Connect a base first");
  return whyWait(model);
}

QString whyWait(const AppModel& model) {
  return model.busy() ? QStringLiteral("Wait until the base has answered") : QString();
}

void setAvailable(QWidget& control, const QString& reason, const QString& help) {
  control.setEnabled(reason.isEmpty());
  const QString& shown = reason.isEmpty() ? help : reason;
  if (control.toolTip() == shown) return;
  control.setToolTip(shown);
  control.setAccessibleDescription(shown);
}

void setAvailable(QAction* action, const QString& reason) {
  action->setEnabled(reason.isEmpty());
  action->setToolTip(reason);
}

}  // namespace quorvane
