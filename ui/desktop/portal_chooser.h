#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <chrono>
#include <filesystem>

class QDBusPendingCallWatcher;

namespace quorvane {

// One file dialog of the desktop's portal (org.freedesktop.portal.FileChooser). Main thread only;
// never blocks. Emits exactly one of its signals, once. The destructor closes the dialog.
//
// Qt 6.4 asks the portal only with the platform theme "xdgdesktopportal". This class can go when
// the oldest supported Qt asks it with every theme.
class PortalChooser final : public QObject {
  Q_OBJECT

 public:
  struct Request {
    QString method;  // "OpenFile", "SaveFile"
    QString parentWindow;
    QString title;
    QVariantMap options;  // without "handle_token"
  };

  // Sends the request at once. A portal that does not reply within `timeout` is unavailable.
  PortalChooser(QDBusConnection bus, Request request, std::chrono::milliseconds timeout);
  ~PortalChooser() override;
  PortalChooser(const PortalChooser&) = delete;
  PortalChooser& operator=(const PortalChooser&) = delete;

 signals:
  void chosen(const std::filesystem::path& file);
  void dismissed();    // cancelled, or no local file was chosen
  void unavailable();  // no portal, or one without file dialogs

 private slots:
  void responded(uint code, const QVariantMap& results);

 private:
  void answered(QDBusPendingCallWatcher* answer);
  void follow(const QString& handle);
  void unfollow();
  void closeDialog();

  QDBusConnection bus_;
  QString handle_;  // empty once the dialog is closed
};

}  // namespace quorvane
