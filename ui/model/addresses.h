#pragma once

#include <QUrl>

// Where the links lead. The addresses themselves are build options.
namespace quorvane::Addresses {

QUrl website();
QUrl firmwareSupport();
QUrl supportMail();

// The name under which the application is known to the desktop.
QString applicationID();

}  // namespace quorvane::Addresses
