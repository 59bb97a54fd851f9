#pragma once

#include <QString>
#include <QVariantMap>

class QWidget;

// What a desktop gives to a start so that its window may come to the front, under the names that
// org.freedesktop.Application has for it.
namespace quorvane::PlatformData {

// Of this process. To be asked before the application object is made, which takes some of it away.
QVariantMap fromEnvironment();

// The token among the data; empty when there is none.
QString token(const QVariantMap& data);

// Shows the window, also a minimised one, before all others, as far as the desktop lets the bearer
// of the token; an empty one is none. Main thread.
void bringToFront(QWidget& window, const QString& token);

}  // namespace quorvane::PlatformData
