#include "ui/kit/button.h"

#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int padding = 12;
constexpr int chevronWidth = 8;

struct Look {
  QColor ground;
  QColor border;
  QColor ink;
};

Look look(const Button& button) {
  const Theme& t = theme();
  if (!button.isEnabled()) return {t.window, t.line, t.inkDisabled};
  const bool hovered = button.underMouse();
  switch (button.kind()) {
    case Button::Kind::plain:
      if (button.isDown()) return {t.selection, t.edge, t.ink};
      return {hovered ? t.hover : t.surface, t.edge, t.ink};
    case Button::Kind::prominent:
      if (button.isDown()) return {t.brandPress, t.brandEdge, t.onBrand};
      return {hovered ? t.brandHover : t.brand, t.brandEdge, t.onBrand};
    case Button::Kind::destructive:
      return {hovered || button.isDown() ? t.errorGround : t.surface, t.errorLine, t.error};
  }
  return {};
}

}  // namespace

Button::Button(const QString& text, Kind kind, QWidget* parent)
    : QPushButton(text, parent), kind_(kind) {
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Button::setSymbol(const QString& name) {
  symbol_ = name;
  updateGeometry();
}

QFont Button::labelFont() const {
  return Metrics::font(kind_ == Kind::prominent ? Metrics::Type::value : Metrics::Type::body);
}

QSize Button::sizeHint() const {
  int width = 2 * padding + textWidth(labelFont(), text().remove(u'&'));
  if (!symbol_.isEmpty()) width += Metrics::symbolSide() + Metrics::gap;
  if (menu() != nullptr) width += Metrics::gap + chevronWidth;
  return {width, Metrics::atLeast(Metrics::buttonHeight, labelFont())};
}

void Button::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look look = quorvane::look(*this);
  drawBox(painter, rect(), Metrics::controlRadius, look.ground, look.border);

  QRect inner = rect().adjusted(padding, 0, -padding, 0);
  if (!symbol_.isEmpty()) {
    const int side = Metrics::symbolSide();
    const QRectF symbol(inner.left(), (height() - side) / 2.0, side, side);
    drawSymbol(painter, visualRect(*this, symbol).topLeft(), symbol_, side, look.ink);
    inner.setLeft(inner.left() + side + Metrics::gap);
  }
  if (menu() != nullptr) {
    const QRectF chevron(inner.right() - chevronWidth, 0, chevronWidth, height());
    drawChevron(painter, visualRect(*this, chevron).center(), Qt::DownArrow, look.ink);
    inner.setRight(inner.right() - chevronWidth - Metrics::gap);
  }
  painter.setFont(labelFont());
  painter.setPen(look.ink);
  painter.drawText(visualRect(*this, inner), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

bool Button::event(QEvent* event) {
  if (event->type() == QEvent::FontChange) updateGeometry();
  return QPushButton::event(event);
}

IconButton::IconButton(QString symbol, bool destructive, QWidget* parent)
    : QAbstractButton(parent), symbol_(std::move(symbol)), destructive_(destructive) {
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void IconButton::setMark(Mark mark) {
  if (mark_ == mark) return;
  mark_ = mark;
  update();
}

QSize IconButton::sizeHint() const {
  const int side = Metrics::iconButtonSide();
  return {side, side};
}

void IconButton::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  const bool active = isEnabled() && (underMouse() || isDown());
  if (active) drawBox(painter, rect(), Metrics::controlRadius, t.hover, QColor());
  QColor ink = markText(mark_, t.ink2);
  if (active && destructive_) ink = t.error;
  if (!isEnabled()) ink = t.inkDisabled;
  const int side = Metrics::symbolSide();
  drawSymbol(painter, QPoint((width() - side) / 2, (height() - side) / 2), symbol_, side, ink);
}

bool isDestructive(const QWidget& widget) {
  if (const auto* const icon = qobject_cast<const IconButton*>(&widget)) {
    return icon->isDestructive();
  }
  const auto* const button = qobject_cast<const Button*>(&widget);
  return button != nullptr && button->kind() == Button::Kind::destructive;
}

}  // namespace quorvane
