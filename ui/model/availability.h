#pragma once

#include <QAction>
#include <QString>
#include <QWidget>

#include "app/app_model.h"

namespace quorvane {

// The reason why the base is not available now, and what to do about it; empty when it is.
QString whyNotNow(const AppModel& model);

// The same for actions that need no base but have to wait for an exchange with one.
QString whyWait(const AppModel& model);

// Why no settings can be filled in or applied now; empty if they can.
QString whyNotLoad(const AppModel& model);

// The reason why the last write cannot be undone, or the last undo not be redone, now; empty when
// it can. A write to another set or mode is not undone before that is chosen.
QString whyNotReverse(const AppModel& model, UndoDirection direction);

// Disables the control if there is a reason, which becomes its tooltip; else enables it with the
// tooltip `help`.
void setAvailable(QWidget& control, const QString& reason, const QString& help = {});
void setAvailable(QAction* action, const QString& reason);

}  // namespace quorvane
