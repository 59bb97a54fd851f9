#include "ui/desktop/application_interface.h"

#include <QDBusError>
#include <QDBusMessage>

#include "ui/desktop/platform_data.h"
#include "ui/desktop/single_instance.h"

namespace quorvane {

ApplicationInterface::ApplicationInterface(SingleInstance& instance)
    : QDBusAbstractAdaptor(&instance), instance_(instance) {}

void ApplicationInterface::Activate(const QVariantMap& platformData) { Open({}, platformData); }

void ApplicationInterface::Open(const QStringList& uris, const QVariantMap& platformData) {
  const auto tell = [this, uris, token = PlatformData::token(platformData)] {
    if (uris.isEmpty()) {
      emit instance_.activated(token);
    } else {
      emit instance_.opened(uris, token);
    }
  };
  QMetaObject::invokeMethod(&instance_, tell, Qt::QueuedConnection);
}

void ApplicationInterface::ActivateAction(const QString& name, const QVariantList& /*parameter*/,
                                          const QVariantMap& /*platformData*/,
                                          const QDBusMessage& message) {
  message.setDelayedReply(true);
  instance_.reply(message.createErrorReply(QDBusError::InvalidArgs,
                                           QStringLiteral("There is no action \"%1\".").arg(name)));
}

}  // namespace quorvane
