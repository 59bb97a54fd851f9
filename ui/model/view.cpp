#include "ui/model/view.h"

#include <QApplication>
#include <QLineEdit>
#include <QMetaObject>

#include "ui/kit/tab_order.h"

namespace quorvane {
namespace {

bool canHaveFocus(const QWidget& widget) {
  return widget.isVisible() && widget.isEnabled() && widget.focusPolicy() != Qt::NoFocus;
}

}  // namespace

View::View(AppModel& model, QWidget* parent) : QWidget(parent), model_(model) {
  connect(&model, &AppModel::changed, this, &View::schedule);
}

void View::schedule() {
  isDue_ = true;
  if (isScheduled_ || !isVisible()) return;
  isScheduled_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        isScheduled_ = false;
        if (isVisible()) renderIfDue();
      },
      Qt::QueuedConnection);
}

void View::renderIfDue() {
  if (!isDue_) return;
  isDue_ = false;
  render();
  returnFocus();
}

bool View::isFocusFree() {
  const QWidget* const focused = QApplication::focusWidget();
  return focused == nullptr || qobject_cast<const View*>(focused) != nullptr;
}

QWidget* View::firstControl(const QWidget& part) const {
  return nextControl(part, [&part](const QWidget& candidate) {
    return part.isAncestorOf(&candidate) && isSafeToFocus(candidate);
  });
}

void View::takeFocus() {
  QWidget* control = focusWidget();
  if (control == nullptr || control == this || !canHaveFocus(*control) ||
      qobject_cast<QLineEdit*>(control) != nullptr) {
    control = firstControl(mainPart());
    if (control == nullptr) control = firstControl(*this);
  }
  awaitsControl_ = control == nullptr;
  if (awaitsControl_) {
    keepFocus(nullptr);
  } else {
    control->setFocus(Qt::OtherFocusReason);
  }
}

void View::keepFocus(QWidget* place) {
  place_ = place;
  unfocused_.clear();
  setFocus(Qt::OtherFocusReason);
}

void View::returnFocus() {
  if (awaitsControl_ && window()->focusWidget() == this) takeFocus();
  awaitsControl_ = awaitsControl_ && window()->focusWidget() == this;
  if (!unfocused_) return;
  if (window()->focusWidget() != this) {
    unfocused_.clear();
  } else if (canHaveFocus(*unfocused_)) {
    unfocused_->setFocus(Qt::OtherFocusReason);
    unfocused_.clear();
  }
}

// Qt calls this for the Tab key, and when a control with the focus is disabled or hidden. In the
// latter case Qt would move the focus to a neighbour, even to a destructive button.
bool View::focusNextPrevChild(bool next) {
  QWidget* const focused = window()->focusWidget();
  if (isVisible() && focused != nullptr) {
    if (isAncestorOf(focused) && !(focused->isVisible() && focused->isEnabled())) {
      keepFocus(focused);
      if (qobject_cast<View*>(focused) == nullptr) unfocused_ = focused;
      return true;
    }
    QWidget* const control = focused == this ? controlBeside(next) : nullptr;
    if (control != nullptr) {
      control->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
      return true;
    }
  }
  return QWidget::focusNextPrevChild(next);
}

// The view's control before or after the place of the focus, while the view itself has it.
QWidget* View::controlBeside(bool next) const {
  if (!place_ && !next) return nullptr;
  const QWidget* from = this;
  if (place_) from = place_;
  QWidget* const control = next ? nextControl(*from) : previousControl(*from);
  return control != nullptr && isAncestorOf(control) ? control : nullptr;
}

void View::hideEvent(QHideEvent* event) {
  unfocused_.clear();
  QWidget::hideEvent(event);
}

void View::showEvent(QShowEvent* event) {
  renderIfDue();
  QWidget::showEvent(event);
}

}  // namespace quorvane
