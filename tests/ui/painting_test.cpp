#include "ui/kit/painting.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPalette>
#include <QWidget>
#include <array>
#include <functional>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/ui/scales.h"
#include "ui/kit/symbols.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

// Draws on white at this scale, moved right and down by the offset, like a widget's position.
QImage drawn(qreal scale, qreal offset, const std::function<void(QPainter&)>& draw) {
  QImage image(120, 120, QImage::Format_RGB32);
  image.fill(Qt::white);
  image.setDevicePixelRatio(scale);
  QPainter painter(&image);
  painter.translate(offset, offset);
  draw(painter);
  painter.end();
  image.setDevicePixelRatio(1);
  return image;
}

// The bounding rectangle of what is not white.
QRect inked(const QImage& image) {
  QRect part;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) != Qt::white) part |= QRect(x, y, 1, 1);
    }
  }
  return part;
}

std::set<QRgb> colours(const QImage& image) {
  std::set<QRgb> found;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) found.insert(image.pixel(x, y));
  }
  return found;
}

std::string at(qreal scale, qreal offset) {
  return "at scale " + std::to_string(scale) + ", moved by " + std::to_string(offset);
}

constexpr std::array allEdges{Qt::TopEdge, Qt::BottomEdge, Qt::LeftEdge, Qt::RightEdge};

const std::set<QRgb> blackAndWhite{qRgb(0, 0, 0), qRgb(255, 255, 255)};

TEST(Painting, ALineCoversTheSameWholeDevicePixelsEverywhere) {
  for (const qreal scale : drawnScales) {
    for (const qreal offset : drawnOffsets) {
      for (const Qt::Edge edge : allEdges) {
        for (const qreal thickness : {1.0, 2.0, 3.0}) {
          const QImage image = drawn(scale, offset, [&](QPainter& painter) {
            drawEdge(painter, QRectF(5, 7, 21, 13), edge, Qt::black, thickness);
          });
          EXPECT_EQ(colours(image), blackAndWhite) << at(scale, offset);
          const bool isLevel = edge == Qt::TopEdge || edge == Qt::BottomEdge;
          const QRect line = inked(image);
          EXPECT_EQ(isLevel ? line.height() : line.width(), wholePixels(thickness, scale))
              << at(scale, offset);
        }
      }
    }
  }
}

TEST(Painting, ALineEndsWhereItsRectangleDoes) {
  for (const qreal scale : drawnScales) {
    for (const qreal offset : drawnOffsets) {
      const QRectF rect(5, 7, 21, 13);
      const auto line = [&](Qt::Edge edge) {
        return inked(drawn(scale, offset,
                           [&](QPainter& painter) { drawEdge(painter, rect, edge, Qt::black); }));
      };
      const QRect filled = inked(drawn(
          scale, offset, [&](QPainter& painter) { painter.fillRect(rect.toRect(), Qt::black); }));
      EXPECT_EQ(line(Qt::TopEdge).top(), filled.top()) << at(scale, offset);
      EXPECT_EQ(line(Qt::BottomEdge).bottom(), filled.bottom()) << at(scale, offset);
      EXPECT_EQ(line(Qt::LeftEdge).left(), filled.left()) << at(scale, offset);
      EXPECT_EQ(line(Qt::RightEdge).right(), filled.right()) << at(scale, offset);
    }
  }
}

TEST(Painting, ABoxHasABorderOfOneDevicePixelAndNoBlurredSide) {
  const QColor ground(200, 100, 50);
  for (const qreal scale : drawnScales) {
    for (const qreal offset : drawnOffsets) {
      for (const QColor& border : {QColor(Qt::black), QColor()}) {
        const QImage image = drawn(scale, offset, [&](QPainter& painter) {
          drawBox(painter, QRectF(5, 7, 31, 23), 4, ground, border);
        });
        const QRect box = inked(image);
        const QColor edge = border.isValid() ? border : ground;
        const int x = box.center().x();
        const int y = box.center().y();
        for (const QPoint side : {QPoint(x, box.top()), QPoint(x, box.bottom()),
                                  QPoint(box.left(), y), QPoint(box.right(), y)}) {
          EXPECT_EQ(image.pixelColor(side), edge) << at(scale, offset);
        }
        for (const QPoint inside : {QPoint(x, box.top() + 1), QPoint(x, box.bottom() - 1),
                                    QPoint(box.left() + 1, y), QPoint(box.right() - 1, y)}) {
          EXPECT_EQ(image.pixelColor(inside), ground) << at(scale, offset);
        }
      }
    }
  }
}

TEST(Painting, TheRingHasSharpSides) {
  for (const qreal scale : drawnScales) {
    for (const qreal offset : drawnOffsets) {
      const QImage image = drawn(
          scale, offset, [](QPainter& painter) { drawRing(painter, QRectF(9, 11, 31, 23), 4); });
      const QRect ring = inked(image);
      const int width = wholePixels(2, scale);
      for (int i = 0; i < width; ++i) {
        EXPECT_EQ(image.pixelColor(ring.left() + i, ring.center().y()), theme().ring)
            << at(scale, offset);
        EXPECT_EQ(image.pixelColor(ring.center().x(), ring.bottom() - i), theme().ring)
            << at(scale, offset);
      }
      EXPECT_EQ(image.pixelColor(ring.left() + width, ring.center().y()), QColor(Qt::white))
          << at(scale, offset);
    }
  }
}

TEST(Painting, ASymbolIsTheSameEverywhere) {
  for (const qreal scale : drawnScales) {
    QImage first;
    for (const qreal offset : drawnOffsets) {
      const QImage image = drawn(scale, offset, [](QPainter& painter) {
        drawSymbol(painter, QPointF(5, 7), QStringLiteral("trash"), 18, Qt::black);
      });
      const QImage symbol = image.copy(inked(image));
      if (first.isNull()) first = symbol;
      EXPECT_EQ(symbol, first) << at(scale, offset);
    }
  }
}

TEST(Painting, ADotIsTheSameEverywhere) {
  for (const qreal scale : drawnScales) {
    QImage first;
    for (const qreal offset : drawnOffsets) {
      const QImage image = drawn(scale, offset, [](QPainter& painter) {
        drawDot(painter, QRectF(5, 7, 8, 8), Qt::black);
      });
      const QImage dot = image.copy(inked(image));
      if (first.isNull()) first = dot;
      EXPECT_EQ(dot, first) << at(scale, offset);
    }
  }
}

class EdgedWidget final : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    for (const Qt::Edge edge : allEdges) drawEdge(painter, rect(), edge, Qt::black);
  }
};

// The device pixels across the middle of a widget with this geometry and lines at all four edges.
std::string acrossWidget(qreal scale, const QRect& place, bool isLevel) {
  QWidget parent;
  parent.setPalette(QPalette(Qt::white));
  parent.resize(60, 60);
  EdgedWidget widget(&parent);
  widget.setGeometry(place);
  QImage image((QSizeF(parent.size()) * scale).toSize(), QImage::Format_RGB32);
  image.fill(Qt::white);
  image.setDevicePixelRatio(scale);
  parent.render(&image);
  const QPoint middle = (QRectF(place).center() * scale).toPoint();
  std::string pixels;
  for (int i = 0; i < image.width(); ++i) {
    const QColor pixel =
        isLevel ? image.pixelColor(i, middle.y()) : image.pixelColor(middle.x(), i);
    pixels += pixel == Qt::black ? '#' : pixel == Qt::white ? '.' : '?';
  }
  return pixels;
}

TEST(Painting, LinesAlongTheEdgesOfAWidgetAreWhole) {
  for (const qreal scale : drawnScales) {
    const std::string line(static_cast<std::size_t>(wholePixels(1, scale)), '#');
    const std::regex twoLines(fmt::format(R"(\.*{0}\.+{0}\.*)", line));
    for (int at = 0; at < 8; ++at) {
      for (int size = 10; size < 18; ++size) {
        for (const bool isLevel : {true, false}) {
          const std::string pixels = acrossWidget(scale, QRect(at, at, size, size), isLevel);
          EXPECT_TRUE(std::regex_match(pixels, twoLines)) << scale << ": " << pixels;
        }
      }
    }
  }
}

}  // namespace
}  // namespace quorvane
