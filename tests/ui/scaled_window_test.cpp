#include <gtest/gtest.h>

#include <QImage>
#include <vector>

#include "tests/ui/scales.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

// A line in the window, and a position along it with nothing else drawn near.
struct WindowLine {
  const char* widget;
  Qt::Edge edge;
  QColor Theme::*colour;
  double along;  // fraction of the widget's side, 0 to 1
};

class ScaledWindow : public WindowTest, public testing::WithParamInterface<double> {
 protected:
  QImage picture() {
    QImage image((QSizeF(window().size()) * GetParam()).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(GetParam());
    window().render(&image);
    image.setDevicePixelRatio(1);
    return image;
  }

  // The device pixels across the widget's edge, from outside to inside.
  std::vector<QColor> across(const QImage& image, const WindowLine& line) {
    const QWidget& widget = find(line.widget);
    const QRectF rect(widget.mapTo(&window(), QPoint()), widget.size());
    const double scale = GetParam();
    const int x = static_cast<int>((rect.left() + rect.width() * line.along) * scale);
    const int y = static_cast<int>((rect.top() + rect.height() * line.along) * scale);
    std::vector<QColor> colours;
    for (int i = -2; i < 6; ++i) {
      switch (line.edge) {
        case Qt::TopEdge:
          colours.push_back(image.pixelColor(x, qRound(rect.top() * scale) + i));
          break;
        case Qt::BottomEdge:
          colours.push_back(image.pixelColor(x, qRound(rect.bottom() * scale) - 1 - i));
          break;
        case Qt::LeftEdge:
          colours.push_back(image.pixelColor(qRound(rect.left() * scale) + i, y));
          break;
        case Qt::RightEdge:
          colours.push_back(image.pixelColor(qRound(rect.right() * scale) - 1 - i, y));
          break;
      }
    }
    return colours;
  }
};

TEST_P(ScaledWindow, HasLinesOfWholeDevicePixels) {
  open();
  const QImage image = picture();
  const int thickness = wholePixels(1, GetParam());
  for (const WindowLine& line : {WindowLine{"sidebar", Qt::RightEdge, &Theme::line, 0.6},
                                 WindowLine{"tuningHeader", Qt::BottomEdge, &Theme::line, 0.57},
                                 WindowLine{"statusBar", Qt::TopEdge, &Theme::line, 0.7},
                                 WindowLine{"FFRow", Qt::BottomEdge, &Theme::hairline, 0.99},
                                 WindowLine{"SENRow", Qt::BottomEdge, &Theme::hairline, 0.99},
                                 WindowLine{"NDPRow", Qt::BottomEdge, &Theme::hairline, 0.99}}) {
    const std::vector<QColor> found = across(image, line);
    const QColor wanted = theme().*line.colour;
    for (int i = 0; i < static_cast<int>(found.size()); ++i) {
      const bool isOnLine = i >= 2 && i < 2 + thickness;
      EXPECT_EQ(found[static_cast<std::size_t>(i)] == wanted, isOnLine)
          << line.widget << ", pixel " << i - 2 << " is "
          << quorvane::text(found[static_cast<std::size_t>(i)].name());
    }
    // No intermediate colour on either side.
    EXPECT_EQ(found[0], found[1]) << line.widget;
    EXPECT_EQ(found[static_cast<std::size_t>(2 + thickness)], found.back()) << line.widget;
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, ScaledWindow, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0));

}  // namespace
}  // namespace quorvane
