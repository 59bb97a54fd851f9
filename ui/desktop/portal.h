#pragma once

#include <QString>

// The address of xdg-desktop-portal on the session bus.
namespace quorvane::Portal {

inline QString service() { return QStringLiteral("org.freedesktop.portal.Desktop"); }
inline QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }

}  // namespace quorvane::Portal
