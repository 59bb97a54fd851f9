#include "ui/view.h"

#include <QApplication>
#include <QMetaObject>

namespace quorvane {

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
  const QPointer<QWidget> focused = QApplication::focusWidget();
  render();
  keepFocus(focused);
}

// The toolkit hands the focus of a disabled control on to the next: it would be at the end of the
// window after a few reads.
void View::keepFocus(QWidget* before) {
  if (before != nullptr && isAncestorOf(before) && !before->isEnabled()) {
    unfocused_ = before;
    if (QWidget* const next = QApplication::focusWidget()) next->clearFocus();
  } else if (unfocused_ && unfocused_->isEnabled()) {
    if (QApplication::focusWidget() == nullptr) unfocused_->setFocus(Qt::OtherFocusReason);
    unfocused_.clear();
  }
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
