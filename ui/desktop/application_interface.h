#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>

class QDBusMessage;

namespace quorvane {

class SingleInstance;

// The D-Bus interface org.freedesktop.Application of the instance that owns the name. The reply to
// a call is sent before the instance's signal is emitted, since handling the signal may take longer
// than the caller's timeout.
class ApplicationInterface final : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  explicit ApplicationInterface(SingleInstance& instance);

 public slots:
  // NOLINTBEGIN(readability-identifier-naming): the names on the bus
  void Activate(const QVariantMap& platformData);
  void Open(const QStringList& uris, const QVariantMap& platformData);

  // An action is the title of a section of the window, and takes no parameter. Other names get an
  // error reply.
  void ActivateAction(const QString& name, const QVariantList& parameter,
                      const QVariantMap& platformData, const QDBusMessage& message);
  // NOLINTEND(readability-identifier-naming)

 private:
  SingleInstance& instance_;
};

}  // namespace quorvane
