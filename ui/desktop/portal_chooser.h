#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <chrono>
#include <filesystem>

class QDBusPendingCallWatcher;

namespace quorvane {

// One file dialog of the desktop's portal (org.freedesktop.portal.FileChooser). Blocks nobody: main
// thread. Exactly one of its signals is emitted, once. Destruction takes the dialog away.
class PortalChooser final : public QObject {
  Q_OBJECT

 public:
  struct Request {
    QString method;  // "OpenFile", "SaveFile"
    QString parentWindow;
    QString title;
    QVariantMap options;  // without the handle's token
  };

  // Asks at once; a portal that is silent for `timeout` is none.
  PortalChooser(QDBusConnection bus, Request request, std::chrono::milliseconds timeout);
  ~PortalChooser() override;
  PortalChooser(const PortalChooser&) = delete;
  PortalChooser& operator=(const PortalChooser&) = delete;

 signals:
  void chosen(const std::filesystem::path& file);
  void dismissed();    // without a file that we can use
  void unavailable();  // no portal, or not one that does this

 private slots:
  void responded(uint code, const QVariantMap& results);

 private:
  void answered(QDBusPendingCallWatcher* answer);
  void follow(const QString& handle);
  void unfollow();
  void closeDialog();

  QDBusConnection bus_;
  QString handle_;  // empty when the dialog is no more
};

}  // namespace quorvane
