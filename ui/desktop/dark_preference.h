#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <optional>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace quorvane {

// Follows the desktop's preference for a dark appearance, from its portal
// (org.freedesktop.portal.Settings). Main thread only; never blocks.
//
// This class can go when Qt 6.5 is the oldest supported version: QStyleHints has colorScheme()
// then.
class DarkPreference final : public QObject {
  Q_OBJECT

 public:
  // Asks at once, and again whenever a portal registers on the bus.
  explicit DarkPreference(QDBusConnection bus);

 signals:
  // Emitted after each answer and change. None: there is no preference or no portal.
  void told(std::optional<bool> prefersDark);

 private slots:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void ask();
  void answered(QDBusPendingCallWatcher* answer);

  QDBusConnection bus_;
};

}  // namespace quorvane
