#include "ui/model/availability.h"

#include "ui/kit/plain_text.h"

namespace quorvane {

QString whyNotNow(const AppModel& model) {
  if (!model.isConnected()) return QStringLiteral("Connect a base first");
  return whyWait(model);
}

QString whyWait(const AppModel& model) {
  return model.busy() ? QStringLiteral("Wait until the base has answered") : QString();
}

QString whyNotLoad(const AppModel& model) {
  if (model.isConnected() && !model.busy() && !model.tuning()) {
    return QStringLiteral("The base has not told its menu yet");
  }
  return whyNotNow(model);
}

void setAvailable(QWidget& control, const QString& reason, const QString& help) {
  control.setEnabled(reason.isEmpty());
  const QString& shown = reason.isEmpty() ? help : reason;
  if (control.accessibleDescription() == shown && control.toolTip() == PlainText::toolTip(shown)) {
    return;
  }
  PlainText::setToolTip(control, shown);
  control.setAccessibleDescription(shown);
}

void setAvailable(QAction* action, const QString& reason) {
  action->setEnabled(reason.isEmpty());
  PlainText::setToolTip(*action, reason);
}

}  // namespace quorvane
