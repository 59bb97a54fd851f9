#include "ui/kit/tab_order.h"

#include <QLineEdit>

#include "ui/kit/button.h"

namespace quorvane {
namespace {

using Step = QWidget* (QWidget::*)() const;

QWidget* controlFrom(const QWidget& from, Step step, const Fits& fits) {
  for (QWidget* widget = (from.*step)(); widget != &from; widget = (widget->*step)()) {
    if (takesTab(*widget) && widget->window() == from.window() && (!fits || fits(*widget))) {
      return widget;
    }
  }
  return nullptr;
}

}  // namespace

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

bool takesTab(const QWidget& widget) {
  const bool isControl = (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus &&
                         widget.focusProxy() == nullptr && !widget.isWindow();
  return isControl && widget.isVisible() && widget.isEnabled();
}

bool isSafeToFocus(const QWidget& widget) {
  return !isDestructive(widget) && qobject_cast<const QLineEdit*>(&widget) == nullptr;
}

QWidget* nextControl(const QWidget& from, const Fits& fits) {
  return controlFrom(from, &QWidget::nextInFocusChain, fits);
}

QWidget* previousControl(const QWidget& from, const Fits& fits) {
  return controlFrom(from, &QWidget::previousInFocusChain, fits);
}

}  // namespace quorvane
