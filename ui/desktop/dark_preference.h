#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <optional>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace quorvane {

// Whether the desktop prefers a dark appearance, as its portal says (org.freedesktop.portal
// .Settings), from the start and at each change. Blocks nobody: main thread.
class DarkPreference final : public QObject {
  Q_OBJECT

 public:
  // Asks at once, and again when a portal comes that was not there.
  explicit DarkPreference(QDBusConnection bus);

 signals:
  // Nothing: there is no preference, or nobody who knows.
  void told(std::optional<bool> prefersDark);

 private slots:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void ask();
  void answered(QDBusPendingCallWatcher* answer);

  QDBusConnection bus_;
};

}  // namespace quorvane
