#include "ui/kit/metrics.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QWidget>
#include <algorithm>

namespace quorvane::Metrics {
namespace {

constexpr int textMargin = 8;
constexpr int iconMargin = 10;
constexpr qreal symbolPart = 0.9;  // of the height of body text

QFont systemFont(qreal step, QFont::Weight weight = QFont::Normal) {
  QFont font = QApplication::font();
  font.setPointSizeF(font.pointSizeF() + step);
  font.setWeight(weight);
  return font;
}

QFont fixedFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(QApplication::font().pointSizeF() - 1.5);
  return font;
}

}  // namespace

int inset(const QWidget& widget) {
  return widget.window()->width() < narrowBelow ? narrowInset : pageInset;
}

int atLeast(int height, const QFont& font) {
  return std::max(height, QFontMetrics(font).height() + textMargin);
}

int symbolSide() {
  return std::max(symbolSize, qRound(QFontMetrics(font(Type::body)).height() * symbolPart));
}

int iconButtonSide() {
  return std::max(iconButtonSize, QFontMetrics(font(Type::body)).height() + iconMargin);
}

int stepButton() { return atLeast(stepButtonWidth, font(Type::body)); }

QFont font(Type type) {
  switch (type) {
    case Type::pageTitle:
      return systemFont(3, QFont::DemiBold);
    case Type::dialogTitle:
      return systemFont(1.5, QFont::DemiBold);
    case Type::body:
      return systemFont(0);
    case Type::value:
      return systemFont(0, QFont::DemiBold);
    case Type::unit:
    case Type::callout:
      return systemFont(-1);
    case Type::caption:
      return systemFont(-1, QFont::DemiBold);
    case Type::pill:
      return systemFont(-1.5, QFont::DemiBold);
    case Type::fixed:
      return fixedFont();
  }
  return systemFont(0);
}

}  // namespace quorvane::Metrics
