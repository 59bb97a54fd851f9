#include "ui/model/addresses.h"

namespace quorvane::Addresses {

QUrl website() { return {QStringLiteral(QUORVANE_WEBSITE)}; }

QUrl firmwareSupport() {
  QUrl url = website();
  url.setFragment(QStringLiteral("firmware"));
  return url;
}

QUrl supportMail() { return {QStringLiteral("mailto:" QUORVANE_SUPPORT_MAIL)}; }

QString applicationID() { return QStringLiteral(QUORVANE_APPLICATION_ID); }

}  // namespace quorvane::Addresses
