#include "ui/kit/shared_tab_stop.h"

#include <QKeyEvent>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace quorvane {

SharedTabStop::SharedTabStop(std::vector<QWidget*> controls, QObject* parent)
    : QObject(parent), controls_(std::move(controls)) {
  for (QWidget* const control : controls_) control->installEventFilter(this);
  if (!controls_.empty()) stopAt(controls_.front());
}

bool SharedTabStop::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) stopAt(watched);
  if (event->type() != QEvent::KeyPress) return false;
  const auto* const key = static_cast<QKeyEvent*>(event);
  return (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && move(watched, key->key());
}

void SharedTabStop::stopAt(const QObject* control) {
  for (QWidget* const each : controls_) {
    each->setFocusPolicy(each == control ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

// Stays where it is at either end.
bool SharedTabStop::move(const QObject* from, int key) {
  const auto last = static_cast<int>(controls_.size()) - 1;
  const auto place =
      static_cast<int>(std::find(controls_.begin(), controls_.end(), from) - controls_.begin());
  int next = place;
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Left:
      next = std::max(place - 1, 0);
      break;
    case Qt::Key_Down:
    case Qt::Key_Right:
      next = std::min(place + 1, last);
      break;
    case Qt::Key_Home:
      next = 0;
      break;
    case Qt::Key_End:
      next = last;
      break;
    default:
      return false;
  }
  controls_[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
  return true;
}

}  // namespace quorvane
