#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

class QWidget;

namespace quorvane {

// Where a rectangle of a widget is drawn: mirrored at the widget's middle if its layout runs from
// right to left. Places of a widget's parts are reckoned from left to right first.
QRect visualRect(const QWidget& widget, const QRect& rect);
QRectF visualRect(const QWidget& widget, const QRectF& rect);

// An arrow head without a stem, 8 pixels long.
void drawChevron(QPainter& painter, const QPointF& centre, Qt::ArrowType pointing,
                 const QColor& colour);

// The chevron before something that folds: points down while it is open, else to where the line of
// text goes on.
void drawFoldChevron(QPainter& painter, const QWidget& widget, const QPointF& centre, bool isOpen);

// All of the following align to device pixels, at every scale.

// A filled box with a border of one device pixel, drawn inside the rectangle. An invalid colour
// draws nothing.
void drawBox(QPainter& painter, const QRectF& rect, qreal radius, const QColor& ground,
             const QColor& border);

// A line along an edge of the rectangle, inside of it.
void drawEdge(QPainter& painter, const QRectF& rect, Qt::Edge edge, const QColor& colour,
              qreal thickness = 1);

// A bar or a dot whose size does not depend on its position.
void drawBar(QPainter& painter, const QRectF& rect, const QColor& colour);
void drawDot(QPainter& painter, const QRectF& rect, const QColor& colour);

// The focus ring around a rectangle: outside of it, with its gap.
void drawRing(QPainter& painter, const QRectF& around, qreal radius);

}  // namespace quorvane
