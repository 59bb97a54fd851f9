#pragma once

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QString>

namespace quorvane {

// Draws one of the program's symbols ("steeringwheel", "trash", ...) in a colour, `size` logical
// pixels square, with its corner at the device pixel boundary nearest to `place`. The rendered
// symbol is cached for each scale.
void drawSymbol(QPainter& painter, const QPointF& place, const QString& name, int size,
                const QColor& colour);

}  // namespace quorvane
