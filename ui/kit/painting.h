#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace quorvane {

// All of these align to device pixels, at every scale.

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
