#include "ui/kit/mirroring.h"

#include <QStyle>
#include <QWidget>

namespace quorvane {

QMargins visualMargins(const QWidget& widget, const QMargins& margins) {
  if (widget.layoutDirection() == Qt::LeftToRight) return margins;
  return {margins.right(), margins.top(), margins.left(), margins.bottom()};
}

QRect firstPart(const QRect& rect, int width, Qt::LayoutDirection layout) {
  return QStyle::visualRect(layout, rect, QRect(rect.topLeft(), QSize(width, rect.height())));
}

QRect withoutFirst(const QRect& rect, int width, Qt::LayoutDirection layout) {
  return QStyle::visualRect(layout, rect, rect.adjusted(width, 0, 0, 0));
}

int lineFlags(const QString& text, Qt::Alignment alignment, Qt::LayoutDirection layout) {
  const int direction = text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
  const auto aligned = static_cast<int>(QStyle::visualAlignment(layout, alignment));
  return aligned | direction | static_cast<int>(Qt::TextSingleLine);
}

}  // namespace quorvane
