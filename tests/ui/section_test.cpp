#include "ui/model/section.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QPainter>
#include <string>
#include <vector>

#include "ui/kit/symbols.h"

namespace quorvane {
namespace {

TEST(Section, TitlesAreTheRawValuesInTheOrderOfTheSidebar) {
  std::vector<std::string> titles;
  titles.reserve(allSections.size());
  for (const Section section : allSections) titles.emplace_back(rawValue(section));
  EXPECT_EQ(titles, (std::vector<std::string>{"Base", "Tuning", "Presets", "Tools", "Log"}));
}

TEST(Section, IsFoundByItsRawValueAndByNothingElse) {
  for (const Section wanted : allSections) EXPECT_EQ(section(rawValue(wanted)), wanted);
  for (const char* const text : {"", "log", "LOG", "Settings", "tools", " Log", "Log "}) {
    EXPECT_EQ(section(text), std::nullopt) << text;
  }
}

TEST(Section, EachHasASymbol) {
  for (const Section section : allSections) {
    const auto name = std::string(symbolName(section));
    QImage image(18, 18, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawSymbol(painter, QPointF(), QString::fromStdString(name), 18, Qt::black);
    painter.end();
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) drawn += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
    }
    EXPECT_GT(drawn, 20) << name;
  }
}

}  // namespace
}  // namespace quorvane
