#include "ui/desktop/dark_preference.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <utility>

#include "ui/desktop/portal.h"

namespace quorvane {
namespace {

constexpr uint dark = 1;
constexpr uint light = 2;

QString interface() { return QStringLiteral("org.freedesktop.portal.Settings"); }
QString group() { return QStringLiteral("org.freedesktop.appearance"); }
QString key() { return QStringLiteral("color-scheme"); }

// Removes the variants around the value; portals wrap it once or twice.
QVariant unwrapped(QVariant value) {
  while (value.userType() == qMetaTypeId<QDBusVariant>()) {
    value = qvariant_cast<QDBusVariant>(value).variant();
  }
  return value;
}

std::optional<bool> preference(const QVariant& wrapped) {
  const QVariant value = unwrapped(wrapped);
  if (value.userType() != QMetaType::UInt) return std::nullopt;
  if (value.toUInt() == dark) return true;
  if (value.toUInt() == light) return false;
  return std::nullopt;
}

}  // namespace

DarkPreference::DarkPreference(QDBusConnection bus) : bus_(std::move(bus)) {
  // QtDBus looks up the slot by its type names; this type may not be registered yet.
  qRegisterMetaType<QDBusVariant>();
  // No sender name: with one, QtDBus blocks to look up its owner.
  bus_.connect(QString(), Portal::path(), interface(), QStringLiteral("SettingChanged"), this,
               SLOT(settingChanged(QString, QString, QDBusVariant)));
  auto* const portal = new QDBusServiceWatcher(Portal::service(), bus_,
                                               QDBusServiceWatcher::WatchForRegistration, this);
  connect(portal, &QDBusServiceWatcher::serviceRegistered, this, &DarkPreference::ask);
  ask();
}

void DarkPreference::ask() {
  QDBusMessage question = QDBusMessage::createMethodCall(Portal::service(), Portal::path(),
                                                         interface(), QStringLiteral("Read"));
  question << group() << key();
  auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, &DarkPreference::answered);
}

void DarkPreference::answered(QDBusPendingCallWatcher* answer) {
  answer->deleteLater();
  const QDBusPendingReply<QDBusVariant> reply = *answer;
  emit told(reply.isError() ? std::nullopt : preference(reply.value().variant()));
}

void DarkPreference::settingChanged(const QString& changedGroup, const QString& changedKey,
                                    const QDBusVariant& value) {
  if (changedGroup == group() && changedKey == key()) emit told(preference(value.variant()));
}

}  // namespace quorvane
