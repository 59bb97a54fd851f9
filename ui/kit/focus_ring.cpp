#include "ui/kit/focus_ring.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QMenuBar>
#include <QPainter>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"

namespace quorvane {
namespace {

constexpr int reach = Metrics::ringGap + Metrics::ringWidth;

// Whether the last input came from the keyboard; the ring shows only then.
bool usesKeyboard = false;

// The part of the control that the ring goes around.
QRect ringRect(const QWidget& widget) {
  if (const auto* const slider = qobject_cast<const ValueSlider*>(&widget)) {
    return slider->capRect();
  }
  if (const auto* const toggle = qobject_cast<const Toggle*>(&widget)) {
    return toggle->switchRect();
  }
  // A row of a list has its ring inside.
  if (widget.property("ringInside").toBool()) {
    return widget.rect().adjusted(reach, reach, -reach, -reach);
  }
  return widget.rect();
}

qreal ringRadius(const QWidget& widget) {
  if (qobject_cast<const ValueSlider*>(&widget) != nullptr) return Metrics::plateRadius;
  if (qobject_cast<const Toggle*>(&widget) != nullptr) return ringRect(widget).height() / 2.0;
  return Metrics::controlRadius;
}

}  // namespace

FocusRing::FocusRing(QWidget* window) : QWidget(window) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
  qApp->installEventFilter(this);
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
      if (auto* const widget = qobject_cast<QWidget*>(watched);
          widget != nullptr && widget->window() == window()) {
        follow(widget);
      }
      break;
    case QEvent::FocusOut:
      if (watched == ringed_) follow(nullptr);
      break;
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::Hide:
      if (ringed_ &&
          (watched == ringed_ || qobject_cast<QWidget*>(watched) == window() ||
           (watched->isWidgetType() && static_cast<QWidget*>(watched)->isAncestorOf(ringed_)))) {
        place();
      }
      break;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
      noteInput(true);
      break;
    case QEvent::MouseButtonPress:
      noteInput(false);
      break;
    default:
      break;
  }
  return false;
}

void FocusRing::noteInput(bool isKeyboard) {
  if (usesKeyboard == isKeyboard && isKeyboard == isVisible()) return;
  usesKeyboard = isKeyboard;
  place();
}

void FocusRing::follow(QWidget* widget) {
  // A focus proxy, or the line edit in a spin box, stands for the whole control.
  if (widget != nullptr && widget->focusProxy() != nullptr) widget = widget->focusProxy();
  if (widget != nullptr && qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) != nullptr) {
    widget = widget->parentWidget();
  }
  if (ringed_) {
    if (auto* const slider = qobject_cast<ValueSlider*>(ringed_.data())) {
      disconnect(slider, nullptr, this, nullptr);
    }
  }
  ringed_ = widget;
  if (auto* const slider = qobject_cast<ValueSlider*>(widget)) {
    connect(slider, &QAbstractSlider::valueChanged, this, &FocusRing::place);
  }
  place();
}

void FocusRing::place() {
  const bool shows = ringed_ && usesKeyboard && ringed_->isVisible() &&
                     qobject_cast<QAbstractScrollArea*>(ringed_.data()) == nullptr &&
                     qobject_cast<QMenuBar*>(ringed_.data()) == nullptr &&
                     ringed_->focusPolicy() != Qt::NoFocus;
  if (!shows) {
    hide();
    return;
  }
  const QRect rect = ringRect(*ringed_).adjusted(-reach, -reach, reach, reach);
  setGeometry(QRect(ringed_->mapTo(window(), rect.topLeft()), rect.size()));
  raise();
  show();
  update();
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
  if (!ringed_) return;
  QPainter painter(this);
  drawRing(painter, rect().adjusted(reach, reach, -reach, -reach), ringRadius(*ringed_));
}

}  // namespace quorvane
