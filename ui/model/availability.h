#pragma once

#include <QAction>
#include <QString>
#include <QWidget>

#include "app/app_model.h"

namespace quorvane {

// Why nothing can be asked of the base now, and what to do about it; empty when it can.
QString whyNotNow(const AppModel& model);

// The same for what needs no base, and yet has to wait for an exchange with one.
QString whyWait(const AppModel& model);

// Enables the control, or disables it with the reason as its help text. Otherwise its help text is
// `help`.
void setAvailable(QWidget& control, const QString& reason, const QString& help = {});
void setAvailable(QAction* action, const QString& reason);

}  // namespace quorvane
