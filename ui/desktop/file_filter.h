#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "app/file_panels.h"

class QDBusArgument;

namespace quorvane {

// A line of the list of file types in a panel.
struct FileFilter {
  QString name;
  QStringList globs;  // "*.json"

  // What a panel offers for that content, the fitting one first.
  static QList<FileFilter> of(FilePanels::Content content);

  // As the toolkit's dialog takes it: "Presets (*.json)".
  QString text() const;

  // Lists of filters can be sent on the bus after this, as the portal takes them: a(sa(us)).
  static void registerOnBus();
};

QDBusArgument& operator<<(QDBusArgument& argument, const FileFilter& filter);
const QDBusArgument& operator>>(const QDBusArgument& argument, FileFilter& filter);

}  // namespace quorvane
