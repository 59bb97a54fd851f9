#include "ui/model/addresses.h"

namespace quorvane::Addresses {
namespace {

QUrl partOfWebsite(const QString& part) {
  QUrl url = website();
  url.setFragment(part);
  return url;
}

}  // namespace

QUrl website() { return {QStringLiteral(QUORVANE_WEBSITE)}; }

QUrl firmwareSupport() { return partOfWebsite(QStringLiteral("firmware")); }

QUrl userGuide() { return partOfWebsite(QStringLiteral("guide")); }

QUrl supportMail() { return {QStringLiteral("mailto:" QUORVANE_SUPPORT_MAIL)}; }

QString applicationID() { return QStringLiteral(QUORVANE_APPLICATION_ID); }

}  // namespace quorvane::Addresses
