#include "ui/model/window_state.h"

#include <QSettings>
#include <optional>

#include "support/user_directories.h"

namespace quorvane::WindowState {
namespace {

std::optional<QString> stateFile() {
  const auto directory = userStateDirectory();
  if (!directory) return std::nullopt;
  return QString::fromStdString((*directory / "Quorvane" / "window.ini").string());
}

}  // namespace

bool flag(const QString& key, bool otherwise) {
  const auto file = stateFile();
  return file ? QSettings(*file, QSettings::IniFormat).value(key, otherwise).toBool() : otherwise;
}

void setFlag(const QString& key, bool value) {
  if (const auto file = stateFile()) QSettings(*file, QSettings::IniFormat).setValue(key, value);
}

QString word(const QString& key) {
  const auto file = stateFile();
  return file ? QSettings(*file, QSettings::IniFormat).value(key).toString() : QString();
}

void setWord(const QString& key, const QString& value) {
  if (const auto file = stateFile()) QSettings(*file, QSettings::IniFormat).setValue(key, value);
}

}  // namespace quorvane::WindowState
