#pragma once

#include <QDBusConnection>
#include <optional>

namespace quorvane {

// Whether a session bus listens at DBUS_SESSION_BUS_ADDRESS, else at $XDG_RUNTIME_DIR/bus. Only
// local sockets count. Does not block and does not start a bus.
bool hasSessionBus();

// Connects to the session bus; none without one, and then starts no thread and no bus. Blocks until
// the bus has accepted the connection. Main thread only; needs an application object.
std::optional<QDBusConnection> sessionBus();

}  // namespace quorvane
