#include "ui/kit/device_pixels.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cmath>
#include <vector>

#include "tests/ui/scales.h"

namespace quorvane {
namespace {

class Sheet {
 public:
  explicit Sheet(qreal scale, qreal offset = 0) : image_(100, 100, QImage::Format_RGB32) {
    image_.setDevicePixelRatio(scale);
    painter_.begin(&image_);
    painter_.translate(offset, offset);
  }

  DevicePixels pixels() const { return DevicePixels(painter_); }
  QRectF onDevice(const QRectF& rect) const { return painter_.deviceTransform().mapRect(rect); }

 private:
  QImage image_;
  QPainter painter_;
};

bool isWhole(qreal number) { return std::abs(number - std::round(number)) < 1e-9; }

bool isWhole(const QRectF& rect) {
  return isWhole(rect.left()) && isWhole(rect.top()) && isWhole(rect.right()) &&
         isWhole(rect.bottom());
}

struct Length {
  qreal scale;
  qreal logical;
  int devicePixels;
};

TEST(DevicePixels, LengthsAreWholeNumbersOfThem) {
  for (const Length& l : std::vector<Length>{{1, 1, 1},
                                             {1, 0.2, 1},
                                             {1.25, 1, 1},
                                             {1.5, 1, 1},
                                             {1.75, 1, 2},
                                             {2, 1, 2},
                                             {1.25, 2, 2},
                                             {1.5, 2, 3},
                                             {1.25, 4, 5},
                                             {1.5, 18, 27}}) {
    const DevicePixels pixels = Sheet(l.scale).pixels();
    EXPECT_NEAR(pixels.length(l.logical) / pixels.one(), l.devicePixels, 1e-9)
        << l.logical << " at " << l.scale;
  }
}

TEST(DevicePixels, SnappedNeighboursStayNeighbours) {
  for (const qreal scale : drawnScales) {
    for (const qreal offset : drawnOffsets) {
      const Sheet sheet(scale, offset);
      const DevicePixels pixels = sheet.pixels();
      const QRectF first = sheet.onDevice(pixels.snapped(QRectF(3, 5, 7, 11)));
      const QRectF below = sheet.onDevice(pixels.snapped(QRectF(3, 16, 7, 2)));
      EXPECT_TRUE(isWhole(first)) << scale << ' ' << offset;
      EXPECT_NEAR(first.bottom(), below.top(), 1e-9) << scale << ' ' << offset;
    }
  }
}

TEST(DevicePixels, WhatIsPlacedHasTheSameSizeEverywhere) {
  for (const qreal scale : drawnScales) {
    const QSizeF size = Sheet(scale).pixels().placed(QRectF(0, 0, 3, 18)).size();
    for (const qreal offset : drawnOffsets) {
      const Sheet sheet(scale, offset);
      const QRectF placed = sheet.pixels().placed(QRectF(5, 7, 3, 18));
      EXPECT_TRUE(isWhole(sheet.onDevice(placed))) << scale << ' ' << offset;
      EXPECT_NEAR(placed.width(), size.width(), 1e-9);
      EXPECT_NEAR(placed.height(), size.height(), 1e-9);
    }
  }
}

TEST(DevicePixels, WhatIsCentredIsHalfADevicePixelOffAtMost) {
  for (const qreal scale : drawnScales) {
    const Sheet sheet(scale);
    const DevicePixels pixels = sheet.pixels();
    const QRectF box = pixels.placed(QRectF(5, 7, 10, 18));
    const QRectF line = pixels.centred(box, 1, 8);
    EXPECT_TRUE(isWhole(sheet.onDevice(line))) << scale;
    EXPECT_LE(std::abs(line.center().x() - box.center().x()), pixels.one() / 2 + 1e-9) << scale;
    EXPECT_LE(std::abs(line.center().y() - box.center().y()), pixels.one() / 2 + 1e-9) << scale;
  }
}

}  // namespace
}  // namespace quorvane
