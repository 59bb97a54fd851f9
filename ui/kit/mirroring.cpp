#include "ui/kit/mirroring.h"

#include <QWidget>

namespace quorvane {

QMargins visualMargins(const QWidget& widget, const QMargins& margins) {
  if (widget.layoutDirection() == Qt::LeftToRight) return margins;
  return {margins.right(), margins.top(), margins.left(), margins.bottom()};
}

}  // namespace quorvane
