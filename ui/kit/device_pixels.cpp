#include "ui/kit/device_pixels.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

// Rounds to the nearest whole number; halves round down.
qreal shorter(qreal number) { return std::ceil(number - 0.5); }

}  // namespace

DevicePixels::DevicePixels(const QPainter& painter)
    : scale_(painter.deviceTransform().m11()),
      left_(painter.deviceTransform().dx()),
      top_(painter.deviceTransform().dy()) {}

qreal DevicePixels::length(qreal logical) const {
  return std::max(1.0, shorter(logical * scale_)) / scale_;
}

// Halves round up, as Qt does when it clips to a widget.
QRectF DevicePixels::snapped(const QRectF& rect) const {
  const qreal left = std::round(deviceX(rect.left()));
  const qreal top = std::round(deviceY(rect.top()));
  const qreal right = std::round(deviceX(rect.right()));
  const qreal bottom = std::round(deviceY(rect.bottom()));
  return {logical(left, top), logical(right, bottom)};
}

QRectF DevicePixels::placed(const QRectF& rect) const {
  return {logical(shorter(deviceX(rect.left())), shorter(deviceY(rect.top()))),
          QSizeF(length(rect.width()), length(rect.height()))};
}

QRectF DevicePixels::centred(const QRectF& in, qreal width, qreal height) const {
  const qreal left = in.center().x() - length(width) / 2;
  const qreal top = in.center().y() - length(height) / 2;
  return placed({left, top, width, height});
}

qreal DevicePixels::deviceX(qreal x) const { return x * scale_ + left_; }

qreal DevicePixels::deviceY(qreal y) const { return y * scale_ + top_; }

QPointF DevicePixels::logical(qreal x, qreal y) const {
  return {(x - left_) / scale_, (y - top_) / scale_};
}

}  // namespace quorvane
