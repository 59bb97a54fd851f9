#include "ui/kit/toggle.h"

#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int switchWidth = 30;
constexpr int switchHeight = 16;
constexpr int switchText = 18;  // height of the text that this size is for
constexpr int knobInset = 2;
constexpr int wordGap = 7;

// Grows with the font, in its proportions.
QSize switchSize() {
  const int text = QFontMetrics(Metrics::font(Metrics::Type::body)).height();
  const int wide = std::max(switchWidth, text * switchWidth / switchText);
  return {wide, wide * switchHeight / switchWidth};
}

// The width of the switch with the room for its ring.
int switchRoom() { return Metrics::ringGap + Metrics::ringWidth + switchSize().width(); }

}  // namespace

Toggle::Toggle(const QString& word, QWidget* parent) : QAbstractButton(parent) {
  setText(word);
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(this, &QAbstractButton::toggled, this, &Toggle::chosen);
}

void Toggle::show(bool on, Mark mark) {
  if (on == isChecked() && mark == mark_) return;
  mark_ = mark;
  const QSignalBlocker silent(this);
  setChecked(on);
  update();
}

QRect Toggle::switchRect() const {
  const QSize size = switchSize();
  const QPoint place(Metrics::ringGap + Metrics::ringWidth, (height() - size.height()) / 2);
  return visualRect(*this, QRect(place, size));
}

QSize Toggle::sizeHint() const {
  const QFont font = Metrics::font(Metrics::Type::callout);
  const int word = textWidth(font, text());
  return {switchRoom() + wordGap + word, Metrics::atLeast(Metrics::rowControlHeight, font)};
}

void Toggle::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  const bool on = isChecked();
  const bool hovered = isEnabled() && underMouse();
  QColor track = on ? t.switchOn : t.switchOff;
  QColor border;
  QColor knob = on ? t.knobOn : t.knobOff;
  if (mark_ != Mark::none) {
    border = markColour(mark_, t.edge);
    track = on ? border : t.surface;
    knob = !on ? border : mark_ == Mark::refused ? t.surface : t.knobOff;
  } else if (!isEnabled()) {
    track = on ? t.inkDisabled : t.graduation;
  } else if (hovered) {
    track = on ? t.ink : t.ink2;
  }
  const DevicePixels pixels(painter);
  const QRectF box = pixels.placed(switchRect());
  drawBox(painter, box, box.height() / 2, track, border);
  const qreal inset = pixels.length(knobInset);
  const qreal size = box.height() - 2 * inset;
  const bool isRight = on == (layoutDirection() == Qt::LeftToRight);
  const qreal x = isRight ? box.right() - inset - size : box.left() + inset;
  drawDot(painter, QRectF(x, box.top() + inset, size, size), knob);

  painter.setFont(Metrics::font(Metrics::Type::callout));
  painter.setPen(t.ink2);
  painter.drawText(visualRect(*this, rect().adjusted(switchRoom() + wordGap, 0, 0, 0)),
                   Qt::AlignLeft | Qt::AlignVCenter, text());
}

}  // namespace quorvane
