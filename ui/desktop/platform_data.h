#pragma once

#include <QString>
#include <QVariantMap>

class QWidget;

// The activation data that the desktop passes to a starting program so that its window may come to
// the front, with the keys of org.freedesktop.Application.
namespace quorvane::PlatformData {

// The data of this process. Call before the QApplication is created, which removes some of it from
// the environment.
QVariantMap fromEnvironment();

// The activation token in the data; empty without one.
QString token(const QVariantMap& data);

// Shows the window, restores it if minimised, and raises it if the desktop allows that for the
// token (empty: none). Main thread.
void bringToFront(QWidget& window, const QString& token);

}  // namespace quorvane::PlatformData
