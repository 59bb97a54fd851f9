#pragma once

#include <QDBusConnection>
#include <optional>

namespace quorvane {

// Somebody listens at the address of the session's message bus: DBUS_SESSION_BUS_ADDRESS, else
// $XDG_RUNTIME_DIR/bus. Addresses other than local sockets do not count. Starts nothing and does
// not block.
bool hasSessionBus();

// The session's message bus, or none; where there is none, no thread is started and nothing is
// launched. Blocks until the bus has let us in. For the main thread, with an application object.
std::optional<QDBusConnection> sessionBus();

}  // namespace quorvane
