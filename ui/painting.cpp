#include "ui/painting.h"

#include "ui/metrics.h"
#include "ui/theme.h"

namespace quorvane {

void drawBox(QPainter& painter, const QRect& rect, qreal radius, const QColor& ground,
             const QColor& border) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const qreal width = 1.0 / painter.device()->devicePixelRatioF();
  const qreal half = width / 2;
  painter.setPen(border.isValid() ? QPen(border, width) : QPen(Qt::NoPen));
  painter.setBrush(ground.isValid() ? QBrush(ground) : QBrush(Qt::NoBrush));
  painter.drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), radius, radius);
  painter.restore();
}

void drawRing(QPainter& painter, const QRect& around, qreal radius) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr qreal middle = Metrics::ringGap + Metrics::ringWidth / 2.0;
  painter.setPen(QPen(theme().ring, Metrics::ringWidth));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(around).adjusted(-middle, -middle, middle, middle),
                          radius + middle, radius + middle);
  painter.restore();
}

}  // namespace quorvane
