#pragma once

#include <QPainter>
#include <QPointF>
#include <QRectF>

namespace quorvane {

// Aligns shapes to the device pixels of a painter, in its logical coordinates. At scales such
// as 1.25 a logical pixel is not a whole number of device pixels, and an edge between two of them
// looks blurred. Uses the painter's transformation at construction, which must not rotate or shear.
class DevicePixels {
 public:
  explicit DevicePixels(const QPainter& painter);

  // The side of one device pixel.
  qreal one() const { return 1 / scale_; }

  // The length rounded to a whole number of device pixels, at least one. Halves round down, so that
  // a line is one device pixel wide up to scale 1.5.
  qreal length(qreal logical) const;

  // Moves each side to the nearest pixel boundary. Rectangles with a common side still have it
  // afterwards.
  QRectF snapped(const QRectF& rect) const;

  // Moves the top left corner to the nearest pixel boundaries and rounds the sides with length(),
  // so that the size does not depend on the position.
  QRectF placed(const QRectF& rect) const;

  // A rectangle with sides rounded by length(), centred in another up to half a device pixel.
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
