#include "ui/desktop/session_bus.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QFileInfo>
#include <QList>
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include "support/unique_fd.h"

namespace quorvane {
namespace {

// `name` in the kernel's form: the name of an abstract socket begins with a null byte.
bool listens(const QByteArray& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const auto length = static_cast<std::size_t>(name.size());
  if (length == 0 || length >= sizeof address.sun_path) return false;
  std::memcpy(address.sun_path, name.constData(), length);
  const UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const int result = ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address),
                               static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length));
  return result == 0 || errno == EAGAIN;
}

// One address of the list: "unix:path=/run/user/1000/bus,guid=...".
bool addressAnswers(const QByteArray& address) {
  constexpr const char* transport = "unix:";
  if (!address.startsWith(transport)) return false;
  for (const QByteArray& pair : address.mid(qsizetype(std::strlen(transport))).split(',')) {
    const qsizetype equals = pair.indexOf('=');
    const QByteArray key = pair.left(equals);
    const QByteArray value = QByteArray::fromPercentEncoding(pair.mid(equals + 1));
    if (key == "path") return listens(value);
    if (key == "abstract") return listens('\0' + value);
  }
  return false;
}

// False for another user's socket: the client library ignores it and would start a bus instead.
bool userBusAnswers() {
  const QByteArray directory = qgetenv("XDG_RUNTIME_DIR");
  if (directory.isEmpty()) return false;
  const QByteArray socket = directory + "/bus";
  return QFileInfo(QFile::decodeName(socket)).ownerId() == ::geteuid() && listens(socket);
}

}  // namespace

bool hasSessionBus() {
  const QByteArray addresses = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  if (addresses.isEmpty()) return userBusAnswers();
  const QList<QByteArray> list = addresses.split(';');
  return std::any_of(list.begin(), list.end(), addressAnswers);
}

std::optional<QDBusConnection> sessionBus() {
  if (!hasSessionBus()) return std::nullopt;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return std::nullopt;
  return bus;
}

}  // namespace quorvane
