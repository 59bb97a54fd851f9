#include "ui/kit/spinner.h"

#include <QPainter>
#include <QTimerEvent>

#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int diameter = 14;
constexpr int frame = 80;  // milliseconds
constexpr int turn = 30;   // degrees
constexpr int sixteenths = 16;
constexpr int arc = 270;

}  // namespace

Spinner::Spinner(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setFixedSize(diameter, diameter);
}

QSize Spinner::sizeHint() const { return {diameter, diameter}; }

void Spinner::showEvent(QShowEvent* /*event*/) { timer_.start(frame, this); }

void Spinner::hideEvent(QHideEvent* /*event*/) { timer_.stop(); }

void Spinner::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return;
  angle_ = (angle_ + turn) % 360;
  update();
}

void Spinner::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(theme().ink2, 1.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), -angle_ * sixteenths,
                  arc * sixteenths);
}

}  // namespace quorvane
