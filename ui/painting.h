#pragma once

#include <QColor>
#include <QPainter>
#include <QRect>
#include <QString>
#include <string>
#include <string_view>

namespace quorvane {

// A filled box with a border of one device pixel, drawn inside the rectangle. An invalid colour
// draws nothing.
void drawBox(QPainter& painter, const QRect& rect, qreal radius, const QColor& ground,
             const QColor& border);

// The focus ring around a rectangle: outside of it, with its gap.
void drawRing(QPainter& painter, const QRect& around, qreal radius);

inline QString text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string text(const QString& string) { return string.toStdString(); }

}  // namespace quorvane
