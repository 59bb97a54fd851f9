#pragma once

#include <QPainter>
#include <QPointF>
#include <QRectF>

namespace quorvane {

// Where the pixels of a painter's device lie, in the painter's own coordinates. At scales such
// as 1.25 a logical pixel is no whole number of them, and what ends between two of them looks
// blurred. Holds for the transformation that the painter has while this is made, which neither
// turns nor shears.
class DevicePixels {
 public:
  explicit DevicePixels(const QPainter& painter);

  // The side of one device pixel.
  qreal one() const { return 1 / scale_; }

  // The length that is a whole number of device pixels, at least one, and nearest to this one. The
  // shorter of two that are equally near, so that a line is one device pixel up to scale 1.5.
  qreal length(qreal logical) const;

  // Each side on the nearest boundary between device pixels. Rectangles that share a side share it
  // afterwards.
  QRectF snapped(const QRectF& rect) const;

  // The first corner on the nearest boundaries, and sides of a `length`: the size is the same at
  // every place.
  QRectF placed(const QRectF& rect) const;

  // A rectangle with sides of a `length` in the middle of another, or half a device pixel beside
  // it.
  QRectF centred(const QRectF& in, qreal width, qreal height) const;

 private:
  qreal deviceX(qreal x) const;
  qreal deviceY(qreal y) const;
  QPointF logical(qreal x, qreal y) const;

  qreal scale_;
  qreal left_;
  qreal top_;
};

}  // namespace quorvane
