#pragma once

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QString>

namespace quorvane {

// Draws one of our symbols ("steeringwheel", "trash", ...) in a colour, `size` logical pixels
// square, with its corner on the boundary of device pixels that is nearest to the place. It is made
// for the painter's scale once, and kept.
void drawSymbol(QPainter& painter, const QPointF& place, const QString& name, int size,
                const QColor& colour);

}  // namespace quorvane
