#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

namespace quorvane {

// One of our symbols ("steeringwheel", "trash", ...) in a colour, `size` logical pixels square, for
// a screen of that pixel ratio. Drawn once and kept.
QPixmap symbol(const QString& name, int size, const QColor& colour, qreal devicePixelRatio);

}  // namespace quorvane
