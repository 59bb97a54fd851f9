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

}  // namespace quorvane
