#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <chrono>
#include <filesystem>
#include <optional>
#include <vector>

#include "ui/model/section.h"

namespace quorvane {

// Limits the application to one process per session: the first one owns the application's name on
// the session bus and serves org.freedesktop.Application; later ones hand over to it and exit.
//
// Not thread-safe. Signals are emitted by the event loop of its thread. The destructor releases the
// name.
class SingleInstance final : public QObject {
  Q_OBJECT

 public:
  enum class Start {
    owner,       // the first process; gets the requests of later ones
    handedOver,  // the owner has accepted the request; this process should exit
    alone,       // no bus, or the owner does not answer: independent of other processes
  };

  static constexpr std::chrono::milliseconds defaultTimeout{2000};

  // `timeout` applies to each D-Bus call.
  SingleInstance(std::optional<QDBusConnection> bus, QString applicationID,
                 std::chrono::milliseconds timeout = defaultTimeout);
  ~SingleInstance() override;
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Call once. Blocks on the bus, and on the owner if there is one. Relative files are resolved
  // against the working directory. `section` is the section to show; ignored if there are files,
  // whose import chooses the section.
  Start start(const std::vector<std::filesystem::path>& files, const QVariantMap& platformData,
              std::optional<Section> section = std::nullopt);

  // Sends a reply to a D-Bus call.
  void reply(const QDBusMessage& message) const { bus_->send(message); }

 signals:
  // Another process asks to show the window; `token` is for bringToFront().
  void activated(const QString& token);

  // Another process asks to open these too. A URI need not be a local file (see FileURI::toPath).
  void opened(const QStringList& uris, const QString& token);

  // Another process, or the desktop's menu, asks to show this section.
  void sectionChosen(Section section, const QString& token);

 private:
  bool own();
  bool handOver(const std::vector<std::filesystem::path>& files, const QVariantMap& platformData,
                std::optional<Section> section);
  QDBusMessage ask(const QDBusMessage& question);

  std::optional<QDBusConnection> bus_;
  const QString name_;
  const QString path_;
  const std::chrono::milliseconds timeout_;
  bool isOwner_ = false;
};

}  // namespace quorvane
