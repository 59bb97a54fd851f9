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

// How long to wait for an answer that will not come.
inline constexpr std::chrono::milliseconds soon{50};

// Runs the event loop until the predicate holds. It is asked at first, and whenever nothing else is
// to be done.
void waitUntil(const std::function<bool()>& holds);

// A message bus of the test's own, with no services that it could start. Gone with every connection
// when this is destroyed.
class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const QString& address() const { return address_; }

  // Another client.
  QDBusConnection connect();

  // The bus ends; its clients notice before this returns.
  void stop();

  // Runs the event loop until `receiver` has handled what `sender` sent it before.
  static void settle(const QDBusConnection& sender, const QDBusConnection& receiver);

  // Calls from a client, and runs the event loop until the answer is there.
  static QDBusMessage call(const QDBusConnection& client, const QDBusMessage& call);

  // Becomes the owner of a name.
  static void own(const QDBusConnection& client, const QString& name);

 private:
  TemporaryDirectory directory_;
  QProcess daemon_;
  QString address_;
  std::vector<QString> clients_;
};

}  // namespace quorvane
