// The keys and the keyboard focus of ParameterRow.

#include <QFocusEvent>
#include <QKeyEvent>

#include "ui/kit/button.h"
#include "ui/kit/pickers.h"
#include "ui/kit/readout.h"
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"
#include "ui/tuning/parameter_row.h"

namespace quorvane {
namespace {

bool isReturn(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// The typed character with which a number can begin.
QString numberBegun(const QKeyEvent& event, int lowest) {
  const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
  const QString typed = event.text();
  if (modifiers != Qt::NoModifier || typed.size() != 1) return {};
  return typed.front().isDigit() || (typed.front() == u'-' && lowest < 0) ? typed : QString();
}

}  // namespace

// Keys with Ctrl are the row's in every control, also where the control has a use for them.
void ParameterRow::watchKeys() {
  for (QWidget* const control : controls()) control->installEventFilter(this);
  if (segments_ == nullptr) return;
  for (QRadioButton* const button : segments_->buttons()) button->installEventFilter(this);
}

bool ParameterRow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && takesKey(static_cast<const QKeyEvent&>(*event))) {
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

bool ParameterRow::takesKey(const QKeyEvent& event) {
  if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::ControlModifier) return false;
  if (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down) {
    emit neighbourWanted(event.key() == Qt::Key_Down);
    return true;
  }
  if (!isReturn(event) || !state_.isNotTaken() || !whyNot_.isEmpty()) return false;
  emit triedAgain(state_.parameter);
  return true;
}

// Keys that the control with the focus has no use for.
bool ParameterRow::takesEditingKey(const QKeyEvent& event) {
  if (!whyNot_.isEmpty()) return false;
  if (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete) {
    if (!isChanged()) return false;
    emit reverted(state_.parameter);
    return true;
  }
  if (event.key() == Qt::Key_Space && toggle_ != nullptr) {
    toggle_->click();
    return true;
  }
  if (readout_ == nullptr) return false;
  const QString begun = numberBegun(event, readout_->minimum());
  if (begun.isEmpty() && event.key() != Qt::Key_F2 && !isReturn(event)) return false;
  readout_->startTyping(begun);
  return true;
}

void ParameterRow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    emit helpWanted(state_.parameter);
  } else if (!takesKey(*event) && !takesEditingKey(*event)) {
    QWidget::keyPressEvent(event);
  }
}

void ParameterRow::takeFocus() { mainControl()->setFocus(Qt::OtherFocusReason); }

void ParameterRow::focusInEvent(QFocusEvent* /*event*/) {
  if (mainControl()->isEnabled()) takeFocus();
}

// The focus that a control loses when it is disabled or hidden goes to the row. Qt would move it to
// a neighbour.
bool ParameterRow::focusNextPrevChild(bool next) {
  QWidget* const focused = window()->focusWidget();
  const bool isLost = focused != nullptr && isAncestorOf(focused) &&
                      !(focused->isVisibleTo(this) && focused->isEnabled());
  if (!isLost || !isVisibleTo(window())) return QWidget::focusNextPrevChild(next);
  keepFocusOf(focused);
  return true;
}

void ParameterRow::keepFocusOf(QWidget* control) {
  unfocused_ = control;
  setFocus(Qt::OtherFocusReason);
}

// Gives the focus back to the control that lost it, else to the row's Tab stop.
void ParameterRow::passFocusOn() {
  if (!hasFocus()) return;
  QWidget* const before = unfocused_;
  QWidget* const next =
      before != nullptr && before->isVisible() && before->isEnabled() ? before : mainControl();
  if (next->isEnabled()) next->setFocus(Qt::OtherFocusReason);
}

}  // namespace quorvane
