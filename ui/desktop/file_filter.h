#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "app/file_panels.h"

class QDBusArgument;

namespace quorvane {

// One entry in a file panel's list of file types.
struct FileFilter {
  QString name;
  QStringList globs;  // "*.json"

  // The filters of a panel for that content, the matching one first.
  static QList<FileFilter> of(FilePanels::Content content);

  // The format of QFileDialog: "Presets (*.json)".
  QString text() const;

  // Registers lists of filters with QtDBus, in the portal's format: a(sa(us)). Call before sending.
  static void registerOnBus();
};

QDBusArgument& operator<<(QDBusArgument& argument, const FileFilter& filter);
const QDBusArgument& operator>>(const QDBusArgument& argument, FileFilter& filter);

}  // namespace quorvane
