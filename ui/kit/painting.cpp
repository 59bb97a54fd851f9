#include "ui/kit/painting.h"

#include <QStyle>
#include <QTransform>
#include <QWidget>

#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

// The rectangle of a line along an edge, inside `rect`.
QRectF along(QRectF rect, Qt::Edge edge, qreal thickness) {
  switch (edge) {
    case Qt::TopEdge:
      rect.setBottom(rect.top() + thickness);
      break;
    case Qt::BottomEdge:
      rect.setTop(rect.bottom() - thickness);
      break;
    case Qt::LeftEdge:
      rect.setRight(rect.left() + thickness);
      break;
    case Qt::RightEdge:
      rect.setLeft(rect.right() - thickness);
      break;
  }
  return rect;
}

}  // namespace

QRect visualRect(const QWidget& widget, const QRect& rect) {
  return QStyle::visualRect(widget.layoutDirection(), widget.rect(), rect);
}

QRectF visualRect(const QWidget& widget, const QRectF& rect) {
  if (widget.layoutDirection() == Qt::LeftToRight) return rect;
  return {widget.width() - rect.right(), rect.top(), rect.width(), rect.height()};
}

void drawChevron(QPainter& painter, const QPointF& centre, Qt::ArrowType pointing,
                 const QColor& colour) {
  constexpr qreal half = 4;
  QTransform turn;
  turn.rotate(pointing == Qt::DownArrow ? 0 : pointing == Qt::LeftArrow ? 90 : -90);
  const QPolygonF head({QPointF(-half, -half / 2), QPointF(0, half / 2), QPointF(half, -half / 2)});
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(turn.map(head).translated(centre));
  painter.restore();
}

void drawFoldChevron(QPainter& painter, const QWidget& widget, const QPointF& centre, bool isOpen) {
  const Qt::ArrowType aside =
      widget.layoutDirection() == Qt::RightToLeft ? Qt::LeftArrow : Qt::RightArrow;
  drawChevron(painter, centre, isOpen ? Qt::DownArrow : aside, theme().ink2);
}

void drawBox(QPainter& painter, const QRectF& rect, qreal radius, const QColor& ground,
             const QColor& border) {
  const DevicePixels pixels(painter);
  const qreal half = border.isValid() ? pixels.one() / 2 : 0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(border.isValid() ? QPen(border, pixels.one()) : QPen(Qt::NoPen));
  painter.setBrush(ground.isValid() ? QBrush(ground) : QBrush(Qt::NoBrush));
  painter.drawRoundedRect(pixels.snapped(rect).adjusted(half, half, -half, -half), radius, radius);
  painter.restore();
}

void drawEdge(QPainter& painter, const QRectF& rect, Qt::Edge edge, const QColor& colour,
              qreal thickness) {
  const DevicePixels pixels(painter);
  painter.fillRect(along(pixels.snapped(rect), edge, pixels.length(thickness)), colour);
}

void drawBar(QPainter& painter, const QRectF& rect, const QColor& colour) {
  painter.fillRect(DevicePixels(painter).placed(rect), colour);
}

void drawDot(QPainter& painter, const QRectF& rect, const QColor& colour) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawEllipse(DevicePixels(painter).placed(rect));
  painter.restore();
}

void drawRing(QPainter& painter, const QRectF& around, qreal radius) {
  const DevicePixels pixels(painter);
  const qreal width = pixels.length(Metrics::ringWidth);
  const qreal middle = pixels.length(Metrics::ringGap) + width / 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(theme().ring, width));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(pixels.snapped(around).adjusted(-middle, -middle, middle, middle),
                          radius + middle, radius + middle);
  painter.restore();
}

}  // namespace quorvane
