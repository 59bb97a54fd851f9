#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quorvane {

inline QString text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string text(const QString& string) { return string.toStdString(); }

}  // namespace quorvane
