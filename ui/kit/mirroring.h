#pragma once

#include <QMargins>
#include <QRect>
#include <QString>

class QWidget;

namespace quorvane {

// The margins of a widget's layout, reckoned from left to right: swapped if the widget's layout
// runs from right to left, because Qt mirrors a layout's items but not its margins.
QMargins visualMargins(const QWidget& widget, const QMargins& margins);

// The part of a rectangle at its beginning, with this width, and what is left of it without such a
// part. A rectangle begins at its right in a layout from right to left.
QRect firstPart(const QRect& rect, int width, Qt::LayoutDirection layout);
QRect withoutFirst(const QRect& rect, int width, Qt::LayoutDirection layout);

// The flags to draw one line of text (QPainter::drawText), aligned in a layout of this direction.
// The text keeps its own direction: numbers and codes stay as they are.
int lineFlags(const QString& text, Qt::Alignment alignment, Qt::LayoutDirection layout);

}  // namespace quorvane
