#include "ui/desktop/file_filter.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include "presets/settings_share_file.h"
#include "ui/kit/text.h"

namespace quorvane {
namespace {

// A pattern of a filter in the portal's format, which has two kinds of patterns.
struct Pattern {
  uint kind = 0;  // a glob
  QString glob;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Pattern& pattern) {
  argument.beginStructure();
  argument << pattern.kind << pattern.glob;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Pattern& pattern) {
  argument.beginStructure();
  argument >> pattern.kind >> pattern.glob;
  argument.endStructure();
  return argument;
}

FileFilter fitting(FilePanels::Content content) {
  const QString json = QStringLiteral("*.json");
  switch (content) {
    case FilePanels::Content::settings:
      return {QStringLiteral("Quorvane settings"),
              {QStringLiteral("*.") + text(SettingsShareFile::fileExtension), json}};
    case FilePanels::Content::presets:
      return {QStringLiteral("Presets"), {json}};
    case FilePanels::Content::report:
      return {QStringLiteral("Text"), {QStringLiteral("*.txt")}};
  }
  return {};
}

}  // namespace

QList<FileFilter> FileFilter::of(FilePanels::Content content) {
  return {fitting(content), {QStringLiteral("All files"), {QStringLiteral("*")}}};
}

QString FileFilter::text() const {
  return QStringLiteral("%1 (%2)").arg(name, globs.join(QLatin1Char(' ')));
}

void FileFilter::registerOnBus() {
  qDBusRegisterMetaType<Pattern>();
  qDBusRegisterMetaType<QList<Pattern>>();
  qDBusRegisterMetaType<FileFilter>();
  qDBusRegisterMetaType<QList<FileFilter>>();
}

QDBusArgument& operator<<(QDBusArgument& argument, const FileFilter& filter) {
  QList<Pattern> patterns;
  for (const QString& glob : filter.globs) patterns.append({0, glob});
  argument.beginStructure();
  argument << filter.name << patterns;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, FileFilter& filter) {
  QList<Pattern> patterns;
  argument.beginStructure();
  argument >> filter.name >> patterns;
  argument.endStructure();
  filter.globs.clear();
  for (const Pattern& pattern : patterns) filter.globs.append(pattern.glob);
  return argument;
}

}  // namespace quorvane
