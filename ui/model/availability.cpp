#include "ui/model/availability.h"

#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"

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

QString whyNotReverse(const AppModel& model, UndoDirection direction) {
  QString whyNot = whyNotNow(model);
  if (!whyNot.isEmpty()) return whyNot;
  const bool isUndo = direction == UndoDirection::undo;
  const auto& record = isUndo ? model.reversible().byUndo : model.reversible().byRedo;
  if (!record) {
    return isUndo ? QStringLiteral("There is nothing to undo")
                  : QStringLiteral("There is nothing to redo");
  }
  if (model.tuning() && isOfSameSet(*record, *model.tuning())) return {};
  return QStringLiteral("Choose set %1 of the %2 menu first: the values were written there")
      .arg(text(record->menu->setName()), text(record->menu->modeName()));
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
