#pragma once

#include <QWidget>
#include <functional>
#include <vector>

namespace quorvane {

// Sets the Tab order of these widgets' controls: widget by widget, and within each in the order of
// creation. Precondition: all are in one window.
void chainTabOrder(const std::vector<QWidget*>& widgets);

// Whether the Tab key stops at the widget: it is a visible and enabled control.
bool takesTab(const QWidget& widget);

// Whether the program may focus the widget by itself: not a destructive button or a text field.
bool isSafeToFocus(const QWidget& widget);

// The next or previous widget in the window's Tab order that takes Tab and for which `fits` is
// true; null if there is no other.
using Fits = std::function<bool(const QWidget&)>;
QWidget* nextControl(const QWidget& from, const Fits& fits = {});
QWidget* previousControl(const QWidget& from, const Fits& fits = {});

// Where Tab leads to from `from`, or Shift+Tab if `next` is false, in a window whose parts follow
// each other in this order. Within a part its own Tab order counts. After the last control comes
// the first one, which is also the next if `from` is in no part. Controls inside of `from` are left
// out. Null if there is no other control.
QWidget* controlAmong(const std::vector<QWidget*>& parts, const QWidget* from, bool next);

}  // namespace quorvane
