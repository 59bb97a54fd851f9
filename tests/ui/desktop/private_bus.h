#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "tests/support/temporary_directory.h"

namespace quorvane {

// The time-out of waits for an answer that must not come.
inline constexpr std::chrono::milliseconds soon{50};

// Runs the event loop until the predicate holds. It is checked first, and whenever the loop is
// idle.
void waitUntil(const std::function<bool()>& holds);

// A D-Bus daemon for one test, without activatable services. The destructor closes all connections
// and ends the daemon.
class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const QString& address() const { return address_; }

  // Connects another client.
  QDBusConnection connect();

  // Ends the daemon. Returns after all clients have noticed.
  void stop();

  // Runs the event loop until `receiver` has handled all earlier messages of `sender`.
  static void settle(const QDBusConnection& sender, const QDBusConnection& receiver);

  // Sends a call from a client, and runs the event loop until the reply arrives.
  static QDBusMessage call(const QDBusConnection& client, const QDBusMessage& call);

  // Makes the client the owner of a bus name.
  static void own(const QDBusConnection& client, const QString& name);

 private:
  TemporaryDirectory directory_;
  QProcess daemon_;
  QString address_;
  std::vector<QString> clients_;
};

}  // namespace quorvane
