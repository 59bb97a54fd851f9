#include "ui/view.h"

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
  render();
}

void View::showEvent(QShowEvent* event) {
  renderIfDue();
  QWidget::showEvent(event);
}

}  // namespace quorvane
