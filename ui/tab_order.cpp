#include "ui/tab_order.h"

namespace quorvane {

void chainTabOrder(const std::vector<QWidget*>& widgets) {
  QWidget* before = nullptr;
  for (const QWidget* const widget : widgets) {
    for (QWidget* const control : widget->findChildren<QWidget*>()) {
      const bool isPopup = control->window() != widget->window();
      if (isPopup || control->focusPolicy() == Qt::NoFocus || control->focusProxy() != nullptr) {
        continue;
      }
      if (before != nullptr) QWidget::setTabOrder(before, control);
      before = control;
    }
  }
}

}  // namespace quorvane
