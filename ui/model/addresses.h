#pragma once

#include <QUrl>

// The targets of the links; they are build options.
namespace quorvane::Addresses {

QUrl website();
QUrl firmwareSupport();
QUrl supportMail();
QUrl userGuide();

// The application's ID for the desktop (desktop file, icon, D-Bus name).
QString applicationID();

}  // namespace quorvane::Addresses
