#include "tests/ui/desktop/private_bus.h"

#include <sys/prctl.h>

#include <QAbstractEventDispatcher>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <csignal>
#include <string>

namespace quorvane {
namespace {

std::string configuration(const std::string& socket) {
  return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
         "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
         "<busconfig><type>session</type><listen>unix:path=" +
         socket +
         "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
         "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/><allow own=\"*\"/>"
         "</policy></busconfig>";
}

}  // namespace

void waitUntil(const std::function<bool()>& holds) {
  if (holds()) return;
  QEventLoop loop;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                   &loop, [&] {
                     if (holds()) loop.quit();
                   });
  loop.exec();
}

PrivateBus::PrivateBus() {
  const auto file = directory_ / "bus.conf";
  putFile(file, configuration((directory_ / "bus").string()));
  // The kernel ends the daemon with the test, even if that crashes.
  daemon_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  daemon_.start(
      QStringLiteral("dbus-daemon"),
      {QStringLiteral("--nofork"), QStringLiteral("--nopidfile"), QStringLiteral("--print-address"),
       QStringLiteral("--config-file=") + QString::fromStdString(file.string())});
  while (!daemon_.canReadLine() && daemon_.waitForReadyRead(-1)) continue;
  address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  EXPECT_FALSE(address_.isEmpty())
      << "dbus-daemon does not run: " << daemon_.errorString().toStdString();
}

PrivateBus::~PrivateBus() {
  for (const QString& client : clients_) QDBusConnection::disconnectFromBus(client);
  daemon_.kill();
  daemon_.waitForFinished(-1);
}

QDBusConnection PrivateBus::connect() {
  static int count = 0;
  const QString name = QStringLiteral("client %1").arg(++count);
  clients_.push_back(name);
  QDBusConnection connection = QDBusConnection::connectToBus(address_, name);
  EXPECT_TRUE(connection.isConnected());
  return connection;
}

void PrivateBus::stop() {
  daemon_.kill();
  daemon_.waitForFinished(-1);
  for (const QString& client : clients_) {
    const QDBusConnection connection(client);
    const auto ping = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    while (connection.isConnected()) call(connection, ping);
  }
}

void PrivateBus::settle(const QDBusConnection& sender, const QDBusConnection& receiver) {
  const auto ping = QDBusMessage::createMethodCall(receiver.baseService(), QStringLiteral("/"),
                                                   QStringLiteral("org.freedesktop.DBus.Peer"),
                                                   QStringLiteral("Ping"));
  EXPECT_EQ(call(sender, ping).type(), QDBusMessage::ReplyMessage);
}

QDBusMessage PrivateBus::call(const QDBusConnection& client, const QDBusMessage& call) {
  const QDBusPendingCallWatcher watcher(client.asyncCall(call));
  bool isFinished = false;
  QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, [&] { isFinished = true; });
  waitUntil([&] { return isFinished; });
  return watcher.reply();
}

void PrivateBus::own(const QDBusConnection& client, const QString& name) {
  auto request = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
  request << name << uint{4};
  EXPECT_EQ(call(client, request).arguments().value(0).toUInt(), 1U);
}

}  // namespace quorvane
