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

// Keeps the application to one process in a session: the first start owns the application's name on
// the session's bus and answers for it (org.freedesktop.Application), later ones hand over to it.
//
// Lives on one thread, where its signals are emitted, by its event loop. Destruction gives up the
// name.
class SingleInstance final : public QObject {
  Q_OBJECT

 public:
  enum class Start {
    owner,       // the first; it hears of the later ones
    handedOver,  // the owner has taken over everything; this process is done
    alone,       // no bus, or an owner that does not answer: neither hears of the other
  };

  static constexpr std::chrono::milliseconds defaultTimeout{2000};

  // `timeout` is for each answer.
  SingleInstance(std::optional<QDBusConnection> bus, QString applicationID,
                 std::chrono::milliseconds timeout = defaultTimeout);
  ~SingleInstance() override;
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Called once. Blocks for the bus, and for the owner if there is one. Relative files are those of
  // the working directory. `section` is the one that this start asks for; files decide for
  // themselves what is shown.
  Start start(const std::vector<std::filesystem::path>& files, const QVariantMap& platformData,
              std::optional<Section> section = std::nullopt);

  // Sends the reply to a call that came from the bus.
  void reply(const QDBusMessage& message) const { bus_->send(message); }

 signals:
  // Another start wants the window to be seen; the token is the one for bringing it to the front.
  void activated(const QString& token);

  // Another start wants these to be opened as well. Not every URI is one of a file of this machine
  // (see FileURI::toPath).
  void opened(const QStringList& uris, const QString& token);

  // Another start, or the desktop's menu, wants this section to be seen.
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
