#include "ui/desktop/application_interface.h"

#include <QDBusError>
#include <QDBusMessage>

#include "ui/desktop/platform_data.h"
#include "ui/desktop/single_instance.h"
#include "ui/kit/text.h"
#include "ui/model/section.h"

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

void ApplicationInterface::ActivateAction(const QString& name, const QVariantList& parameter,
                                          const QVariantMap& platformData,
                                          const QDBusMessage& message) {
  const auto wanted = section(text(name));
  if (!wanted || !parameter.isEmpty()) {
    message.setDelayedReply(true);
    instance_.reply(message.createErrorReply(
        QDBusError::InvalidArgs,
        wanted ? QStringLiteral("The action \"%1\" takes no parameter.").arg(name)
               : QStringLiteral("There is no action \"%1\".").arg(name)));
    return;
  }
  const auto tell = [this, section = *wanted, token = PlatformData::token(platformData)] {
    emit instance_.sectionChosen(section, token);
  };
  QMetaObject::invokeMethod(&instance_, tell, Qt::QueuedConnection);
}

}  // namespace quorvane
