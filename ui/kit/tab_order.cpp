#include "ui/kit/tab_order.h"

#include <QLineEdit>
#include <algorithm>

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

// Adds the controls of a part, and `from` if it is in the part, in its Tab order.
void addControls(std::vector<QWidget*>& controls, QWidget* part, const QWidget* from) {
  QWidget* widget = part;
  do {
    const bool isInside = widget == part || part->isAncestorOf(widget);
    if (isInside && (takesTab(*widget) || widget == from)) controls.push_back(widget);
    widget = widget->nextInFocusChain();
  } while (widget != part);
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

QWidget* controlAmong(const std::vector<QWidget*>& parts, const QWidget* from, bool next) {
  std::vector<QWidget*> controls;
  for (QWidget* const part : parts) addControls(controls, part, from);
  if (!next) std::reverse(controls.begin(), controls.end());
  const auto place = std::find(controls.begin(), controls.end(), from);
  if (place != controls.end()) std::rotate(controls.begin(), place + 1, controls.end());
  const auto found = std::find_if(controls.begin(), controls.end(), [from](const QWidget* control) {
    return control != from && (from == nullptr || !from->isAncestorOf(control));
  });
  return found == controls.end() ? nullptr : *found;
}

}  // namespace quorvane
