#pragma once

#include <QString>

// Where xdg-desktop-portal is on the session's bus.
namespace quorvane::Portal {

inline QString service() { return QStringLiteral("org.freedesktop.portal.Desktop"); }
inline QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }

}  // namespace quorvane::Portal
