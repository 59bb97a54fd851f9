#include "ui/desktop/portal_chooser.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUuid>
#include <utility>

#include "ui/desktop/portal.h"
#include "ui/kit/file_uri.h"

namespace quorvane {
namespace {

constexpr uint success = 0;

QString requestInterface() { return QStringLiteral("org.freedesktop.portal.Request"); }
QString response() { return QStringLiteral("Response"); }

// A token that cannot be guessed.
QString newToken() {
  return QStringLiteral("quorvane_") + QUuid::createUuid().toString(QUuid::Id128);
}

// The object path of the portal's request for this sender (":1.42") and token.
QString handleOf(QString sender, const QString& token) {
  sender.remove(0, 1).replace(QLatin1Char('.'), QLatin1Char('_'));
  return Portal::path() + QStringLiteral("/request/%1/%2").arg(sender, token);
}

}  // namespace

PortalChooser::PortalChooser(QDBusConnection bus, Request request,
                             std::chrono::milliseconds timeout)
    : bus_(std::move(bus)) {
  const QString token = newToken();
  request.options[QStringLiteral("handle_token")] = token;
  // Before the call: the response signal may arrive before the reply.
  follow(handleOf(bus_.baseService(), token));
  QDBusMessage call = QDBusMessage::createMethodCall(
      Portal::service(), Portal::path(), QStringLiteral("org.freedesktop.portal.FileChooser"),
      request.method);
  call << request.parentWindow << request.title << request.options;
  auto* const answer =
      new QDBusPendingCallWatcher(bus_.asyncCall(call, static_cast<int>(timeout.count())), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, &PortalChooser::answered);
}

PortalChooser::~PortalChooser() { closeDialog(); }

void PortalChooser::answered(QDBusPendingCallWatcher* answer) {
  answer->deleteLater();
  if (handle_.isEmpty()) return;
  const QDBusPendingReply<QDBusObjectPath> reply = *answer;
  if (reply.isError()) {
    // Close a dialog that opens after the timeout.
    closeDialog();
    emit unavailable();
    return;
  }
  // Old portals ignore the token and choose their own handle.
  const QString handle = reply.value().path();
  if (handle == handle_) return;
  unfollow();
  follow(handle);
}

void PortalChooser::responded(uint code, const QVariantMap& results) {
  if (handle_.isEmpty()) return;
  unfollow();
  const QString uri = results.value(QStringLiteral("uris")).toStringList().value(0);
  const auto file = FileURI::toPath(uri);
  if (code == success && file) {
    emit chosen(*file);
  } else {
    emit dismissed();
  }
}

// No sender name: with one, QtDBus blocks to look up its owner.
void PortalChooser::follow(const QString& handle) {
  handle_ = handle;
  bus_.connect(QString(), handle_, requestInterface(), response(), this,
               SLOT(responded(uint, QVariantMap)));
}

void PortalChooser::unfollow() {
  bus_.disconnect(QString(), handle_, requestInterface(), response(), this,
                  SLOT(responded(uint, QVariantMap)));
  handle_.clear();
}

void PortalChooser::closeDialog() {
  if (handle_.isEmpty()) return;
  QDBusMessage call = QDBusMessage::createMethodCall(Portal::service(), handle_, requestInterface(),
                                                     QStringLiteral("Close"));
  call.setAutoStartService(false);
  bus_.send(call);
  unfollow();
}

}  // namespace quorvane
