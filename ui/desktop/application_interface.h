#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>

class QDBusMessage;

namespace quorvane {

class SingleInstance;

// org.freedesktop.Application on the bus, for the instance that owns the name. A call is answered
// before the instance's signal is emitted: what it sets off may take longer than the caller waits.
class ApplicationInterface final : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  explicit ApplicationInterface(SingleInstance& instance);

 public slots:
  // NOLINTBEGIN(readability-identifier-naming): the names on the bus
  void Activate(const QVariantMap& platformData);
  void Open(const QStringList& uris, const QVariantMap& platformData);

  // The actions are the sections of the window, under their titles, and take no parameter.
  void ActivateAction(const QString& name, const QVariantList& parameter,
                      const QVariantMap& platformData, const QDBusMessage& message);
  // NOLINTEND(readability-identifier-naming)

 private:
  SingleInstance& instance_;
};

}  // namespace quorvane
